#include <ZvUtiLib/CUtiMacInfo.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "tests/support/DoorsGuard.h"

namespace {

// An adapter of the machine under test. Both lists show its address. Its driver answers with the address, or
// not at all if it is silent; a silent adapter without an address can't be opened.
struct Adapter {
  std::string address;
  bool isSilent = false;
};

struct Machine {
  std::vector<Adapter> adapters;
  unsigned long listResult = 0;
  std::vector<std::size_t> queried;  // index of the adapter for each query
  int openDevices = 0;
};
Machine* machine = nullptr;

// Fills a list the way the system does: an array linked by Next, or the needed size if the room is too small.
template <class Record, class Fill>
unsigned long List(Record* list, unsigned long* size, Fill fill) {
  const std::size_t count = machine->adapters.size();
  const auto needed = static_cast<unsigned long>(count * sizeof(Record));
  if (*size < needed) {
    *size = needed;
    return 111;  // ERROR_BUFFER_OVERFLOW
  }
  for (std::size_t i = 0; i < count; ++i) {
    list[i] = {};
    list[i].Next = i + 1 < count ? &list[i + 1] : nullptr;
    fill(list[i], i);
  }
  return machine->listResult;
}

class CUtiMacInfoTest : public testing::Test {
 protected:
  CUtiMacInfoTest() {
    machine = &machine_;
    auto& doors = doors_->adapters;
    doors.getAdaptersInfo = [](IP_ADAPTER_INFO* list, unsigned long* size) {
      return List(list, size, [](IP_ADAPTER_INFO& record, std::size_t i) {
        record.AdapterName[0] = static_cast<char>('0' + static_cast<int>(i));
      });
    };
    doors.getAdaptersAddresses = [](IP_ADAPTER_ADDRESSES* list, unsigned long* size) {
      return List(list, size, [](IP_ADAPTER_ADDRESSES& record, std::size_t i) {
        const std::string& address = machine->adapters[i].address;
        std::memcpy(record.PhysicalAddress, address.data(), address.size());
        record.PhysicalAddressLength = static_cast<unsigned long>(address.size());
      });
    };
    doors.openDevice = [](const char* path) -> HANDLE {
      const std::size_t index = std::stoul(std::string(path).substr(std::string("//./").size()));
      machine->queried.push_back(index);
      Adapter& adapter = machine->adapters[index];
      if (adapter.isSilent && adapter.address.empty()) return nullptr;
      ++machine->openDevices;
      return &adapter;
    };
    doors.queryPermanentAddress = [](HANDLE device, void* reply, unsigned long size,
                                     unsigned long* returned) {
      EXPECT_EQ(size, 1024u);
      const auto* adapter = static_cast<const Adapter*>(device);
      if (adapter->isSilent) return 0;
      std::memcpy(reply, adapter->address.data(), adapter->address.size());
      *returned = static_cast<unsigned long>(adapter->address.size());
      return 17;
    };
    doors_->kernel.closeHandle = [](HANDLE) { --machine->openDevices; };
  }
  ~CUtiMacInfoTest() override { EXPECT_EQ(machine_.openDevices, 0); }

  // The entries that a call writes to a buffer of `length` bytes, or "failed".
  using Operation = int (*)(unsigned char*, int, int*);
  static std::string Entries(Operation operation, int length) {
    std::string buffer(48, '.');
    int outLength = -1;
    if (operation(reinterpret_cast<unsigned char*>(buffer.data()), length, &outLength) == 0) {
      EXPECT_EQ(outLength, 0);
      return "failed";
    }
    std::string entries = buffer.substr(0, static_cast<std::size_t>(outLength));
    EXPECT_EQ(buffer.find_first_not_of('.', entries.size()), std::string::npos);
    return entries;
  }

  Machine machine_;
  test::DoorsGuard doors_;
};

constexpr auto kPermanent = &CUtiMacInfo::GetAllMacAddress;
constexpr auto kReported = &CUtiMacInfo::GetAllMacAddress2;

TEST_F(CUtiMacInfoTest, WritesAsManyEntriesAsFit) {
  const std::vector<Adapter> three{{"aaaaaa"}, {"bbbbbb"}, {"cccccc"}};
  const std::vector<Adapter> one{{"aaaaaa"}};
  const std::vector<Adapter> odd{{"ab"}, {"cdefghij"}, {"klmnop"}}, bare{{""}, {"aaaaaa"}, {"bbbbbb"}};
  const struct {
    const std::vector<Adapter>& adapters;
    int length;
    const char *permanent, *reported;
  } cases[] = {
      {one, 12, "aaaaaa", "aaaaaa"},
      {three, INT_MIN, "", ""},
      {three, 5, "", ""},
      {three, 6, "aaaaaa", "aaaaaa"},
      {three, 17, "aaaaaabbbbbb", "aaaaaabbbbbb"},
      {three, 48, "aaaaaabbbbbbcccccc", "aaaaaabbbbbbcccccc"},
      {odd, 12, "ab....cdefgh", "ab....cdefgh"},  // the entry after the long one would hide its end
      {odd, 18, "ab....cdefghklmnop", "ab....cdefghklmnop"},
      {bare, 12, "......aaaaaa", "aaaaaa"},  // the driver answers, with no bytes
      {bare, 24, "......aaaaaabbbbbb", "aaaaaabbbbbb"},
  };
  for (const auto& c : cases) {
    machine_.adapters = c.adapters;
    EXPECT_EQ(Entries(kPermanent, c.length), c.permanent) << c.length;
    EXPECT_EQ(Entries(kReported, c.length), c.reported) << c.length;
  }
  for (const auto operation : {kPermanent, kReported}) {
    int outLength = -1;
    EXPECT_EQ(operation(nullptr, 12, &outLength), 1);
    EXPECT_EQ(outLength, 0);
  }
}

TEST_F(CUtiMacInfoTest, AnAdapterThatDoesNotAnswerIsAskedUntilTheRoomIsUsedUp) {
  for (const char* address : {"bbbbbb", ""}) {  // the query fails, the device can't be opened
    machine_.adapters = {{"aaaaaa"}, {address, true}, {"cccccc"}};
    machine_.queried.clear();
    EXPECT_EQ(Entries(kPermanent, 24), "aaaaaa");
    EXPECT_EQ(machine_.queried, (std::vector<std::size_t>{0, 1, 1, 1}));
  }
}

TEST_F(CUtiMacInfoTest, AListThatCanNotBeReadFails) {
  for (const auto operation : {kPermanent, kReported}) {
    machine_ = {};
    EXPECT_EQ(Entries(operation, 24), "failed");  // without adapters
    machine_.adapters = {{"aaaaaa"}};
    machine_.listResult = 111;  // such as if the list has grown since its size was queried
    EXPECT_EQ(Entries(operation, 24), "failed");
  }
}

}  // namespace
