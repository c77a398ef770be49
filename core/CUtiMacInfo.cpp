#include <ZvUtiLib/CUtiMacInfo.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "platform/Doors.h"

namespace {

constexpr int kEntry = 6;

zvuti::AdapterDoors& Adapters() { return zvuti::TheDoors().adapters; }

// A list of adapters in its own block; null if it can't be read. Reading fails if the list grows after its
// size was queried.
template <class Record>
class AdapterList {
 public:
  explicit AdapterList(unsigned long (*read)(Record* list, unsigned long* size)) {
    Record none{};
    unsigned long size = 0;
    read(&none, &size);
    block_.reset(new (std::nothrow) std::byte[size]);
    if (!block_) return;
    auto* first = reinterpret_cast<Record*>(block_.get());
    if (read(first, &size) == 0 && size >= sizeof(Record)) first_ = first;
  }

  const Record* First() const { return first_; }

 private:
  std::unique_ptr<std::byte[]> block_;
  const Record* first_ = nullptr;
};

}  // namespace

CUtiMacInfo::CUtiMacInfo() = default;
CUtiMacInfo::CUtiMacInfo(const CUtiMacInfo&) = default;
CUtiMacInfo& CUtiMacInfo::operator=(const CUtiMacInfo&) = default;
CUtiMacInfo::~CUtiMacInfo() = default;

int CUtiMacInfo::GetMacAddress(const char* name, unsigned char* buffer, int length) {
  if (!name || !buffer || length < kEntry) return 0;
  char path[1024];
  const int written = std::snprintf(path, sizeof path, "//./%s", name);
  if (written < 0 || written >= static_cast<int>(sizeof path)) return 0;
  HANDLE device = Adapters().openDevice(path);
  if (!device) return 0;
  unsigned char reply[1024] = {};
  unsigned long returned = 0;
  const int answered = Adapters().queryPermanentAddress(device, reply, sizeof reply, &returned);
  if (answered) std::memcpy(buffer, reply, std::min<std::size_t>(returned, kEntry));
  zvuti::TheDoors().kernel.closeHandle(device);
  return answered;
}

int CUtiMacInfo::GetAllMacAddress(unsigned char* buffer, int length, int* outLength) {
  *outLength = 0;
  const AdapterList<IP_ADAPTER_INFO> list(Adapters().getAdaptersInfo);
  if (!list.First()) return 0;
  const IP_ADAPTER_INFO* adapter = list.First();
  int entries = 0;
  for (int pass = 0; adapter && pass < length / kEntry; ++pass) {
    if (!GetMacAddress(adapter->AdapterName, buffer, kEntry)) continue;
    buffer += kEntry;
    ++entries;
    adapter = adapter->Next;
  }
  *outLength = entries * kEntry;
  return 1;
}

int CUtiMacInfo::GetAllMacAddress2(unsigned char* buffer, int length, int* outLength) {
  *outLength = 0;
  const AdapterList<IP_ADAPTER_ADDRESSES> list(Adapters().getAdaptersAddresses);
  if (!list.First()) return 0;
  const IP_ADAPTER_ADDRESSES* adapter = list.First();
  int entries = 0;
  for (int pass = 0; buffer && adapter && pass < length / kEntry; ++pass, adapter = adapter->Next) {
    const auto bytes = std::min<std::size_t>(adapter->PhysicalAddressLength, kEntry);
    if (bytes == 0) continue;
    std::memcpy(buffer, adapter->PhysicalAddress, bytes);
    buffer += kEntry;
    ++entries;
  }
  *outLength = entries * kEntry;
  return 1;
}
