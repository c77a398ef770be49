// CUtiTaskAuto: looks up the names of a game's automatic tasks.
//
// Use an object from one thread at a time; that includes GetName.
#pragma once

#include <ZvUtiLib/platform/CKxIniFileReader.h>
#include <ZvUtiLib/platform/CString.h>

/// The names are in the file "Task.ini" in the game's folder, section "AutoTask", with the task numbers as
/// keys. They are GBK; a UTF-8 byte order mark at the start of the file is skipped.
class ZVUTILIB_API CUtiTaskAuto {
 public:
  virtual ~CUtiTaskAuto();
  CUtiTaskAuto();
  CUtiTaskAuto(const CUtiTaskAuto&) = delete;
  CUtiTaskAuto& operator=(const CUtiTaskAuto&) = delete;

  /// Reads the file of this game, in place of the previous one. If the file does not exist or cannot be read,
  /// all names are "". Throws std::bad_alloc, leaving the previous names.
  void Load(unsigned long gameId);
  /// Returns the name of the task; "" if it has none, and before the first Load. The string belongs to the
  /// object, and the next call overwrites it.
  CString& GetName(int task);

 private:
  CString text_;  // the path after Load, then the last name
  CKxIniFileReaderSuite suite_;
  CKxIniFileReader* reader_ = nullptr;  // owned by suite_; null before the first Load
};
