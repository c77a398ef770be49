// The machine's network adapters: two lists of them, and a query to one adapter's driver.
//
// On Linux the lists hold the interfaces by index, the loopback last, so that callers with room for a few
// records get those with addresses. If there is only the loopback, the lists are empty. Records have only the
// fields that are used.
#pragma once

#if defined(_WIN32)
#  include <ZvUtiLib/platform/Windows.h>

#  include <winsock2.h>
// The lists hold socket addresses, which have to be known by then.
#  include <iphlpapi.h>
#else

#  include "platform/win32/Kernel.h"

using ULONG = DWORD;

constexpr ULONG ERROR_SUCCESS = 0;
constexpr ULONG ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr ULONG ERROR_INVALID_PARAMETER = 87;
constexpr ULONG ERROR_BUFFER_OVERFLOW = 111;
constexpr ULONG ERROR_NO_DATA = 232;

struct IP_ADAPTER_INFO {
  IP_ADAPTER_INFO* Next;
  char AdapterName[260];
};

struct IP_ADAPTER_ADDRESSES {
  IP_ADAPTER_ADDRESSES* Next;
  unsigned char PhysicalAddress[8];
  DWORD PhysicalAddressLength;
};

/// Writes the adapters, the loopback left out, to `list`, a block of `*size` bytes. With too small a
/// block it stores the size needed and returns ERROR_BUFFER_OVERFLOW; without adapters it returns
/// ERROR_NO_DATA.
ULONG GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* size);

/// The same with the addresses that the host system reports. The loopback comes last and has no address.
/// Supports only the family AF_INET (2) and no flags.
ULONG GetAdaptersAddresses(ULONG family, ULONG flags, void* reserved, IP_ADAPTER_ADDRESSES* list,
                           ULONG* size);

constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD FILE_SHARE_READ = 1;
constexpr DWORD FILE_SHARE_WRITE = 2;
constexpr DWORD OPEN_EXISTING = 3;

/// The device of the adapter whose name follows "//./" in `path`; INVALID_HANDLE_VALUE when there is
/// none. Opens nothing else, and looks at no other argument.
HANDLE CreateFileA(const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* attributes,
                   DWORD disposition, DWORD flags, HANDLE templateFile);

/// Asks the device's driver. Answers one question only: the control code 0x170002 with the 4-byte
/// value 0x01010101 asks for the permanent address. Returns nonzero, or 0 without an answer. Drivers of
/// virtual adapters answer with zeros, which count as no answer.
int DeviceIoControl(HANDLE device, DWORD code, void* in, DWORD inSize, void* out, DWORD outSize,
                    DWORD* returned, void* overlapped);

#endif
