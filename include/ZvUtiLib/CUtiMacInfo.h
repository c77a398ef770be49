// CUtiMacInfo: reads the hardware addresses of the machine's network adapters.
#pragma once

#include <ZvUtiLib/Export.h>

/// Addresses are written as consecutive entries of 6 bytes, in the order of the system's list of adapters. On
/// Linux that is the order of the interface indexes, with the loopback last. A buffer of `length` bytes has
/// room for length / 6 entries. Bytes that no address covers stay unchanged, including the rest of an entry
/// whose address is shorter than 6 bytes. Longer addresses are truncated. Stateless: any thread may call.
class ZVUTILIB_API CUtiMacInfo {
 public:
  CUtiMacInfo();
  CUtiMacInfo(const CUtiMacInfo&);
  CUtiMacInfo& operator=(const CUtiMacInfo&);
  virtual ~CUtiMacInfo();

  /// Reads the permanent addresses, as the adapters' drivers report them. Stores the size of all entries in
  /// bytes in `*outLength` and returns 1. Returns 0, with a length of 0, if the list of adapters can't be
  /// read or is empty. An adapter that does not answer is asked again until there is no room left, so the
  /// adapters after it are not reached.
  static int GetAllMacAddress(unsigned char* buffer, int length, int* outLength);

  /// Reads the addresses that the system reports; the results are those of GetAllMacAddress. An adapter
  /// without an address is skipped, but uses up the room of one entry.
  static int GetAllMacAddress2(unsigned char* buffer, int length, int* outLength);

 private:
  /// Writes the permanent address of one adapter and returns nonzero. Returns 0 if the name or the buffer is
  /// null, the length is below 6, or the driver does not answer.
  static int GetMacAddress(const char* name, unsigned char* buffer, int length);
};
