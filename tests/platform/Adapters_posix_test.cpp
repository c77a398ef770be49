#include "platform/win32/Adapters.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netpacket/packet.h>

#include <ZvUtiLib/CUtiMacInfo.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/NothingLeft.h"

namespace {

// The interfaces of a machine that a test makes up, null for the host system's own.
ifaddrs* madeUp = nullptr;

}  // namespace

// In this program these two replace the C library's functions.
extern "C" int getifaddrs(ifaddrs** first) noexcept {
  static const auto real = reinterpret_cast<decltype(&getifaddrs)>(dlsym(RTLD_NEXT, "getifaddrs"));
  if (!madeUp) return real(first);
  *first = madeUp;
  return 0;
}
extern "C" void freeifaddrs(ifaddrs* first) noexcept {
  static const auto real = reinterpret_cast<decltype(&freeifaddrs)>(dlsym(RTLD_NEXT, "freeifaddrs"));
  if (!madeUp) real(first);
}

namespace {

// Reads a list in two calls, as its users do.
template <class Record, class Read, class Text>
std::vector<std::string> ListOf(Read read, Text text) {
  ULONG size = 0;
  EXPECT_NE(read(nullptr, &size), ERROR_SUCCESS);
  std::vector<Record> block(size / sizeof(Record) + 1);
  std::vector<std::string> all;
  const bool isRead = read(block.data(), &size) == ERROR_SUCCESS;
  for (const Record* record = isRead ? block.data() : nullptr; record; record = record->Next)
    all.push_back(text(*record));
  return all;
}

TEST(Adapters, ABufferForOneAddressGetsTheOneOfTheLowestIndex) {
  struct Interface {
    char name[IF_NAMESIZE];
    unsigned char index;  // also each byte of the address
    unsigned char length;
    unsigned flags = 0;
    std::uint16_t family = AF_PACKET;
    sockaddr_ll link{};
    ifaddrs entry{};
  };
  Interface interfaces[] = {{"eth1", 3, 6},
                            {"lo", 1, 6, IFF_LOOPBACK},
                            {"ib0", 2, 20},  // of which a socket address holds 8 bytes
                            {"none", 4, 0},
                            {"other", 0, 6, 0, AF_INET}};
  for (Interface& one : interfaces) {
    one.link.sll_family = one.family;
    one.link.sll_ifindex = one.index;
    one.link.sll_halen = one.length;
    std::memset(one.link.sll_addr, one.index, sizeof one.link.sll_addr);
    one.entry.ifa_name = one.name;
    one.entry.ifa_flags = one.flags;
    one.entry.ifa_next = madeUp;
    if (one.length > 0) one.entry.ifa_addr = reinterpret_cast<sockaddr*>(&one.link);
    madeUp = &one.entry;
  }
  for (const int room : {0, 1, 2, 3}) {
    unsigned char buffer[18] = {};
    int length = -1;
    EXPECT_EQ(CUtiMacInfo::GetAllMacAddress2(buffer, 6 * room, &length), 1);
    const std::string all = std::string(6, '\2') + std::string(6, '\3');
    EXPECT_EQ(std::string(buffer, buffer + length), all.substr(0, static_cast<std::size_t>(6 * room)));
  }
  const auto names = ListOf<IP_ADAPTER_INFO>(
      GetAdaptersInfo, [](const auto& record) { return std::string(record.AdapterName); });
  EXPECT_THAT(names, testing::ElementsAre("ib0", "eth1"));
  const auto addresses = ListOf<IP_ADAPTER_ADDRESSES>(
      [](IP_ADAPTER_ADDRESSES* list, ULONG* size) { return GetAdaptersAddresses(2, 0, nullptr, list, size); },
      [](const auto& record) {
        return std::string(record.PhysicalAddress, record.PhysicalAddress + record.PhysicalAddressLength);
      });
  EXPECT_THAT(addresses, testing::ElementsAre(std::string(8, '\2'), std::string(6, '\3'), ""));
  madeUp = nullptr;
}

TEST(Adapters, QueriesOnlyDevicesThatExist) {
  const test::NothingLeft nothingLeft;
  const auto open = [](const char* path) {
    return CreateFileA(path, 0, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  };
  EXPECT_EQ(open("//./no-such-adapter"), INVALID_HANDLE_VALUE);
  EXPECT_EQ(open("lo"), INVALID_HANDLE_VALUE);
  HANDLE loopback = open("//./lo");  // an adapter without a permanent address
  for (HANDLE device : {loopback, HANDLE{}}) {
    std::uint32_t permanentAddress = 0x01010101;
    unsigned char reply[6];
    DWORD returned = 0;
    EXPECT_EQ(DeviceIoControl(device, 0x170002, &permanentAddress, 4, reply, 6, &returned, nullptr), 0);
  }
  CloseHandle(loopback);
  const std::unique_ptr<struct if_nameindex, void (*)(struct if_nameindex*)> all(if_nameindex(),
                                                                                 if_freenameindex);
  for (const auto* one = all.get(); one && one->if_index != 0; ++one) {
    HANDLE device = open(("//./" + std::string(one->if_name)).c_str());
    const struct {
      DWORD code;
      std::uint32_t what;
      DWORD size;
    } queries[] = {{0x170003, 0x01010101, 4}, {0x170002, 0x01010102, 4}, {0x170002, 0x01010101, 3}};
    for (auto query : queries) {
      unsigned char reply[6];
      DWORD returned = 0;
      EXPECT_EQ(DeviceIoControl(device, query.code, &query.what, query.size, reply, 6, &returned, nullptr),
                0);
    }
    CloseHandle(device);
  }
  ULONG size = 0;
  EXPECT_EQ(GetAdaptersAddresses(10, 0, nullptr, nullptr, &size), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(GetAdaptersAddresses(2, 1, nullptr, nullptr, &size), ERROR_INVALID_PARAMETER);
}

}  // namespace
