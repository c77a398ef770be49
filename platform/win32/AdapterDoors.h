// The doors to the network adapters.
#pragma once

#include "platform/win32/Adapters.h"

namespace zvuti {

struct AdapterDoors {
  /// The two lists, each as one linked block; 0 is success. With too small a block they store the size
  /// that they need.
  unsigned long (*getAdaptersInfo)(IP_ADAPTER_INFO* list, unsigned long* size);
  unsigned long (*getAdaptersAddresses)(IP_ADAPTER_ADDRESSES* list, unsigned long* size);
  /// Opens an adapter's device, null on failure. The kernel's door closes it.
  HANDLE (*openDevice)(const char* path);
  /// Writes the adapter's permanent address to `reply` and its length to `*returned`; 0 on failure.
  int (*queryPermanentAddress)(HANDLE device, void* reply, unsigned long size, unsigned long* returned);
};

/// Doors that lead to the system.
AdapterDoors SystemAdapterDoors();

}  // namespace zvuti
