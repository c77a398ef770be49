#include "platform/win32/Adapters.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tests/support/NothingLeft.h"

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

TEST(Adapters, ListsTheInterfacesInTheOrderOfTheirIndexes) {
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
  for (const auto& [index, interface] : system) {
    const bool loopback = interface.first == "lo";
    if (!loopback) names.push_back(interface.first);
    addresses.push_back(loopback ? "" : interface.second.substr(0, 23));  // 8 bytes at most
  }
  if (names.empty()) addresses.clear();
  EXPECT_EQ(
      ListOf<IP_ADAPTER_INFO>(GetAdaptersInfo, [](const auto& r) { return std::string(r.AdapterName); }),
      names);
  const auto read = [](IP_ADAPTER_ADDRESSES* list, ULONG* size) {
    return GetAdaptersAddresses(2, 0, nullptr, list, size);
  };
  EXPECT_EQ(ListOf<IP_ADAPTER_ADDRESSES>(read, TextOf), addresses);
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
