#include "platform/win32/Adapters.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <netpacket/packet.h>
#include <sys/ioctl.h>

#include <ZvUtiLib/CUtiMacInfo.h>

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/NothingLeft.h"

namespace {

// The interfaces of a machine that a test makes up, null for the host system's own.
ifaddrs* madeUp = nullptr;
// The permanent address of each of its devices, empty to ask the host system.
std::string_view permanent;

}  // namespace

// In this program these replace the C library's functions.
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
extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept {
  static const auto real = reinterpret_cast<int (*)(int, unsigned long, ...)>(dlsym(RTLD_NEXT, "ioctl"));
  va_list arguments;
  va_start(arguments, request);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  if (request != SIOCETHTOOL || permanent.empty()) return real(descriptor, request, argument);
  auto* const query = reinterpret_cast<ethtool_perm_addr*>(static_cast<const ifreq*>(argument)->ifr_data);
  EXPECT_STREQ(static_cast<const ifreq*>(argument)->ifr_name, "lo");
  EXPECT_EQ(query->cmd, std::uint32_t{ETHTOOL_GPERMADDR});
  EXPECT_GE(query->size, permanent.size());
  query->size = static_cast<std::uint32_t>(permanent.size());
  permanent.copy(reinterpret_cast<char*>(query + 1), permanent.size());
  return 0;
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
  HANDLE loopback = open("//./lo");  // has no permanent address
  constexpr DWORD kQuery = 0x170002;
  constexpr std::uint32_t kPermanent = 0x01010101;
  const std::string_view longest = "an address of thirty-two bytes..";
  const struct {
    HANDLE device;
    std::string_view address;
    DWORD code;
    std::uint32_t query;
    DWORD querySize, room;
    std::string_view reply;
  } cases[] = {
      {loopback, "", kQuery, kPermanent, 4, 32, ""},
      {nullptr, "abcdef", kQuery, kPermanent, 4, 32, ""},
      {loopback, "abcdef", kQuery, kPermanent, 4, 32, "abcdef"},
      {loopback, "abcdef", kQuery, kPermanent, 4, 5, "abcde"},
      {loopback, longest, kQuery, kPermanent, 4, 32, longest},
      {loopback, {"\0\0\0\0\0\0", 6}, kQuery, kPermanent, 4, 32, ""},
      {loopback, {"\0\0\0\0\0f", 6}, kQuery, kPermanent, 4, 32, {"\0\0\0\0\0f", 6}},
      {loopback, "abcdef", kQuery + 1, kPermanent, 4, 32, ""},
      {loopback, "abcdef", kQuery, kPermanent, 3, 32, ""},
      {loopback, "abcdef", kQuery, kPermanent + 1, 4, 32, ""},
  };
  for (const auto& c : cases) {
    permanent = c.address;
    std::uint32_t query = c.query;
    char reply[32];
    DWORD returned = 0;
    const int answered =
        DeviceIoControl(c.device, c.code, &query, c.querySize, reply, c.room, &returned, nullptr);
    EXPECT_EQ(std::string_view(reply, returned), c.reply) << "case " << &c - cases;
    EXPECT_EQ(answered, c.reply.empty() ? 0 : 1) << "case " << &c - cases;
  }
  permanent = {};
  CloseHandle(loopback);
  ULONG size = 0;
  EXPECT_EQ(GetAdaptersAddresses(10, 0, nullptr, nullptr, &size), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(GetAdaptersAddresses(2, 1, nullptr, nullptr, &size), ERROR_INVALID_PARAMETER);
}

}  // namespace
