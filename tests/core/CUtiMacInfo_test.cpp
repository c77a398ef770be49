#include <ZvUtiLib/CUtiMacInfo.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/DoorsGuard.h"

namespace {

// An adapter of the machine that a test makes up. Its address serves both lists; the driver answers
// with it unless it is silent.
struct Adapter {
  std::string address;
  bool silent = false;
};

struct Machine {
  std::vector<Adapter> adapters;
  unsigned long listResult = 0;
  std::size_t growth = 0;  // adapters that come to the list between the two calls
  std::string queries;     // number of the adapter for each query
  int openDevices = 0;
};
Machine* machine = nullptr;

template <class Record, class Fill>
unsigned long List(Record* list, unsigned long* size, Fill fill) {
  const std::size_t count = machine->adapters.size() + (*size > 0 ? machine->growth : 0);
  const auto needed = static_cast<unsigned long>(count * sizeof(Record));
  if (*size < needed) {
    *size = needed;
    return 111;
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
      constexpr std::string_view kPlace = "//./";
      EXPECT_EQ(std::string_view(path).substr(0, kPlace.size()), kPlace);
      machine->queries += path + kPlace.size();
      Adapter& adapter = machine->adapters[static_cast<std::size_t>(machine->queries.back() - '0')];
      if (adapter.silent && adapter.address.empty()) return nullptr;
      ++machine->openDevices;
      return &adapter;
    };
    doors.queryPermanentAddress = [](HANDLE device, void* reply, unsigned long size,
                                     unsigned long* returned) {
      EXPECT_EQ(size, 1024u);
      const auto* adapter = static_cast<const Adapter*>(device);
      if (adapter->silent) return 0;
      std::memcpy(reply, adapter->address.data(), adapter->address.size());
      *returned = static_cast<unsigned long>(adapter->address.size());
      return 17;
    };
    doors_->kernel.closeHandle = [](HANDLE) { --machine->openDevices; };
  }
  ~CUtiMacInfoTest() override { EXPECT_EQ(machine_.openDevices, 0); }

  // The buffer after a call with `length` of its bytes, in front of it the result and the out length.
  using Operation = int (*)(unsigned char*, int, int*);
  std::string Call(Operation operation, int length) {
    std::string buffer(48, '.');
    int outLength = -1;
    machine_.queries.clear();
    const int result = operation(reinterpret_cast<unsigned char*>(buffer.data()), length, &outLength);
    return std::to_string(result) + " " + std::to_string(outLength) + " " +
           buffer.substr(0, buffer.find_last_not_of('.') + 1);
  }

  Machine machine_;
  test::DoorsGuard doors_;
};

constexpr auto kPermanent = &CUtiMacInfo::GetAllMacAddress;
constexpr auto kReported = &CUtiMacInfo::GetAllMacAddress2;

TEST_F(CUtiMacInfoTest, WritesAsManyEntriesAsFit) {
  const std::vector<Adapter> three{{"aaaaaa"}, {"bbbbbb"}, {"cccccc"}};
  const std::vector<Adapter> odd{{"ab"}, {"cdefghij"}, {"klmnop"}}, bare{{""}, {"aaaaaa"}, {"bbbbbb"}};
  const struct {
    const std::vector<Adapter>& adapters;
    int length;
    const char *permanent, *reported;
  } cases[] = {
      {three, INT_MIN, "1 0 ", "1 0 "},
      {three, -6, "1 0 ", "1 0 "},
      {three, 5, "1 0 ", "1 0 "},
      {three, 6, "1 6 aaaaaa", "1 6 aaaaaa"},
      {three, 17, "1 12 aaaaaabbbbbb", "1 12 aaaaaabbbbbb"},
      {three, 48, "1 18 aaaaaabbbbbbcccccc", "1 18 aaaaaabbbbbbcccccc"},
      {odd, 12, "1 12 ab....cdefgh", "1 12 ab....cdefgh"},  // nothing behind the long one hides its end
      {odd, 18, "1 18 ab....cdefghklmnop", "1 18 ab....cdefghklmnop"},
      {bare, 12, "1 12 ......aaaaaa", "1 6 aaaaaa"},  // its driver has answered, with no bytes
      {bare, 24, "1 18 ......aaaaaabbbbbb", "1 12 aaaaaabbbbbb"},
  };
  for (const auto& c : cases) {
    machine_.adapters = c.adapters;
    EXPECT_EQ(Call(kPermanent, c.length), c.permanent) << c.length;
    EXPECT_EQ(Call(kReported, c.length), c.reported) << c.length;
  }
  for (const auto operation : {kPermanent, kReported}) {
    int outLength = -1;
    EXPECT_EQ(operation(nullptr, 12, &outLength), 1);
    EXPECT_EQ(outLength, 0);
  }
}

TEST_F(CUtiMacInfoTest, AnAdapterThatDoesNotAnswerIsAskedUntilTheRoomIsUsedUp) {
  for (const char* address : {"bbbbbb", ""}) {  // the query fails, the device does not open
    machine_.adapters = {{"aaaaaa"}, {address, true}, {"cccccc"}};
    EXPECT_EQ(Call(kPermanent, 48), "1 6 aaaaaa");
    EXPECT_EQ(machine_.queries, "01111111");
    machine_.adapters.erase(machine_.adapters.begin());
    EXPECT_EQ(Call(kPermanent, 12), "1 0 ");
  }
}

TEST_F(CUtiMacInfoTest, AListThatCanNotBeReadFails) {
  for (const auto operation : {kPermanent, kReported}) {
    machine_ = {};
    EXPECT_EQ(Call(operation, 24), "0 0 ");  // a machine without adapters
    machine_.adapters = {{"aaaaaa"}};
    machine_.growth = 1;
    EXPECT_EQ(Call(operation, 24), "0 0 ");
    machine_.growth = 0;
    machine_.listResult = 5;
    EXPECT_EQ(Call(operation, 5), "0 0 ");
  }
}

}  // namespace
