// CUtiMacInfo: hardware addresses of the machine's network adapters.
#pragma once

#include <ZvUtiLib/Export.h>

/// Addresses are written as entries of 6 bytes, back to back, in the order of the system's list of
/// adapters; on Linux by the interfaces' indexes, the loopback last. A buffer of `length` bytes has room for
/// length / 6 of them; bytes that no entry covers stay as they were, also behind an address of fewer than 6
/// bytes. Longer addresses are cut. Stateless: any thread may call.
class ZVUTILIB_API CUtiMacInfo {
 public:
  CUtiMacInfo();
  CUtiMacInfo(const CUtiMacInfo&);
  CUtiMacInfo& operator=(const CUtiMacInfo&);
  virtual ~CUtiMacInfo();

  /// Permanent addresses, as each adapter's driver tells them. Stores the bytes of the entries in
  /// `*outLength` and returns 1; 0 and a length of 0 when the list of adapters can't be read or is empty.
  /// An adapter that does not answer is asked again until the room is used up, so those behind it are
  /// not reached.
  static int GetAllMacAddress(unsigned char* buffer, int length, int* outLength);

  /// Addresses that the system reports, with the same results. An adapter without an address is stepped
  /// over, but takes the room of an entry away from those behind it.
  static int GetAllMacAddress2(unsigned char* buffer, int length, int* outLength);

 private:
  /// Writes the permanent address of one adapter; returns nonzero, or 0 when the name or the buffer is
  /// null, the length is below 6, or the driver does not answer.
  static int GetMacAddress(const char* name, unsigned char* buffer, int length);
};
