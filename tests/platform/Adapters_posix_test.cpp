#include "platform/win32/Adapters.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netpacket/packet.h>

#include <ZvUtiLib/CUtiMacInfo.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tests/support/NothingLeft.h"

namespace {

// The interfaces of a machine that a test makes up, null for the system's own.
ifaddrs* madeUp = nullptr;

}  // namespace

// These two stand in front of the system's, in this program.
extern "C" int getifaddrs(ifaddrs** first) noexcept {
  static const auto real = reinterpret_cast<int (*)(ifaddrs**)>(dlsym(RTLD_NEXT, "getifaddrs"));
  if (!madeUp) return real(first);
  *first = madeUp;
  return 0;
}
extern "C" void freeifaddrs(ifaddrs* first) noexcept {
  static const auto real = reinterpret_cast<void (*)(ifaddrs*)>(dlsym(RTLD_NEXT, "freeifaddrs"));
  if (!madeUp) real(first);
}

namespace {

// Reads a list in two calls, as its users do; `text` makes a line of each record.
template <class Record, class Read, class Text>
std::vector<std::string> ListOf(Read read, Text text) {
  ULONG size = 0;
  EXPECT_NE(read(nullptr, &size), ERROR_SUCCESS);
  std::vector<Record> block(size / sizeof(Record) + 1);
  std::vector<std::string> lines;
  const bool ok = read(block.data(), &size) == ERROR_SUCCESS;
  for (const Record* record = ok ? block.data() : nullptr; record; record = record->Next) {
    lines.push_back(text(*record));
  }
  return lines;
}

std::string TextOf(const IP_ADAPTER_ADDRESSES& record) {
  std::string text;
  for (unsigned i = 0; i < record.PhysicalAddressLength; ++i) {
    char byte[4];
    std::snprintf(byte, sizeof byte, "%s%02x", i > 0 ? ":" : "", record.PhysicalAddress[i]);
    text += byte;
  }
  return text;
}

TEST(Adapters, ListsTheInterfacesInTheOrderOfTheirIndexesAndTheLoopbackLast) {
  // What the system's own files tell: name and address by index.
  std::map<int, std::pair<std::string, std::string>> system;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator("/sys/class/net", none)) {
    int index = 0;
    std::string address;
    std::ifstream(entry.path() / "ifindex") >> index;
    std::ifstream(entry.path() / "address") >> address;
    if (index > 0) system[index] = {entry.path().filename().string(), address};
  }
  if (system.empty()) GTEST_SKIP() << "the system does not tell its interfaces";
  std::vector<std::string> names, addresses;
  bool hasLoopback = false;
  for (const auto& [index, interface] : system) {
    if (interface.first == "lo") {
      hasLoopback = true;
    } else {
      names.push_back(interface.first);
      addresses.push_back(interface.second.substr(0, 23));  // 8 bytes at most
    }
  }
  if (hasLoopback && !names.empty()) addresses.emplace_back();
  EXPECT_EQ(
      ListOf<IP_ADAPTER_INFO>(GetAdaptersInfo, [](const auto& r) { return std::string(r.AdapterName); }),
      names);
  const auto read = [](IP_ADAPTER_ADDRESSES* list, ULONG* size) {
    return GetAdaptersAddresses(2, 0, nullptr, list, size);
  };
  EXPECT_EQ(ListOf<IP_ADAPTER_ADDRESSES>(read, TextOf), addresses);
}

TEST(Adapters, ABufferForOneAddressGetsTheOneOfTheLowestIndex) {
  struct Interface {
    char name[IF_NAMESIZE];
    int index;
    unsigned flags;
    unsigned char length;  // of its address, of which a socket address holds 8 bytes
    sockaddr_ll link{};
    ifaddrs entry{};
  };
  Interface interfaces[] = {
      {"eth1", 3, 0, 6}, {"lo", 1, IFF_LOOPBACK, 6}, {"ib0", 2, 0, 20}, {"none", 4, 0, 0}};
  ifaddrs* next = nullptr;
  for (Interface& one : interfaces) {
    one.link.sll_family = AF_PACKET;
    one.link.sll_ifindex = one.index;
    one.link.sll_halen = one.length;
    std::memset(one.link.sll_addr, one.index, sizeof one.link.sll_addr);
    one.entry.ifa_name = one.name;
    one.entry.ifa_flags = one.flags;
    one.entry.ifa_next = next;
    if (one.length > 0) one.entry.ifa_addr = reinterpret_cast<sockaddr*>(&one.link);
    next = &one.entry;
  }
  madeUp = next;
  for (int room = 0; room <= 3; ++room) {
    std::string buffer(18, '.');
    int length = -1;
    EXPECT_EQ(
        CUtiMacInfo::GetAllMacAddress2(reinterpret_cast<unsigned char*>(buffer.data()), 6 * room, &length),
        1);
    const std::string all = std::string(6, '\2') + std::string(6, '\3');
    EXPECT_EQ(buffer.substr(0, static_cast<std::size_t>(length)),
              all.substr(0, std::size_t{6} * static_cast<std::size_t>(room)));
  }
  const auto read = [](IP_ADAPTER_ADDRESSES* list, ULONG* size) {
    return GetAdaptersAddresses(2, 0, nullptr, list, size);
  };
  EXPECT_EQ(ListOf<IP_ADAPTER_ADDRESSES>(read, TextOf),
            (std::vector<std::string>{"02:02:02:02:02:02:02:02", "03:03:03:03:03:03", ""}));
  madeUp = nullptr;
}

TEST(Adapters, QueriesOnlyDevicesThatExist) {
  const test::NothingLeft nothingLeft;
  const auto open = [](const char* path) {
    return CreateFileA(path, 0, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  };
  EXPECT_EQ(open("//./no-such-adapter"), INVALID_HANDLE_VALUE);
  EXPECT_EQ(open("lo"), INVALID_HANDLE_VALUE);
  HANDLE loopback = open("//./lo");
  unsigned char reply[6];
  DWORD returned = 0;
  std::uint32_t question = 0x01010101;
  EXPECT_EQ(DeviceIoControl(loopback, 0x170002, &question, 4, reply, 6, &returned, nullptr), 0);
  std::uint32_t otherQuestion = 0;
  EXPECT_EQ(DeviceIoControl(loopback, 1, &question, 4, reply, 6, &returned, nullptr), 0);
  EXPECT_EQ(DeviceIoControl(loopback, 0x170002, &question, 3, reply, 6, &returned, nullptr), 0);
  EXPECT_EQ(DeviceIoControl(loopback, 0x170002, &otherQuestion, 4, reply, 6, &returned, nullptr), 0);
  EXPECT_EQ(DeviceIoControl(nullptr, 0x170002, &question, 4, reply, 6, &returned, nullptr), 0);
  CloseHandle(loopback);
  ULONG size = 0;
  EXPECT_EQ(GetAdaptersAddresses(10, 0, nullptr, nullptr, &size), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(GetAdaptersAddresses(2, 1, nullptr, nullptr, &size), ERROR_INVALID_PARAMETER);
}

}  // namespace
