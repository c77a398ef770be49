#include "platform/win32/AdapterDoors.h"

#include <cstdint>

namespace zvuti {
namespace {

unsigned long ListInfo(IP_ADAPTER_INFO* list, unsigned long* size) { return ::GetAdaptersInfo(list, size); }

unsigned long ListAddresses(IP_ADAPTER_ADDRESSES* list, unsigned long* size) {
  constexpr unsigned long kInternet = 2;
  return ::GetAdaptersAddresses(kInternet, 0, nullptr, list, size);
}

HANDLE OpenDevice(const char* path) {
  HANDLE device = ::CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, 0, nullptr);
  return device == INVALID_HANDLE_VALUE ? nullptr : device;
}

int QueryPermanentAddress(HANDLE device, void* reply, unsigned long size, unsigned long* returned) {
  constexpr unsigned long kQueryGlobalStats = 0x170002;
  std::uint32_t permanentAddress = 0x01010101;  // object identifier of the Ethernet permanent address
  return ::DeviceIoControl(device, kQueryGlobalStats, &permanentAddress, sizeof permanentAddress, reply, size,
                           returned, nullptr);
}

}  // namespace

AdapterDoors SystemAdapterDoors() {
  return {
      .getAdaptersInfo = ListInfo,
      .getAdaptersAddresses = ListAddresses,
      .openDevice = OpenDevice,
      .queryPermanentAddress = QueryPermanentAddress,
  };
}

}  // namespace zvuti
