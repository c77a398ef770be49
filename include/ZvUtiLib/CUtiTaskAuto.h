// CUtiTaskAuto: the names of a game's automatic tasks.
//
// An object serves one thread at a time, GetName included.
#pragma once

#include <ZvUtiLib/platform/CKxIniFileReader.h>
#include <ZvUtiLib/platform/CString.h>

/// The names stand in the file "Task.ini" in the game's folder, section "AutoTask", one key for each
/// task number. They are GBK; a UTF-8 byte order mark before them is skipped.
class ZVUTILIB_API CUtiTaskAuto {
 public:
  virtual ~CUtiTaskAuto();
  CUtiTaskAuto();
  CUtiTaskAuto(const CUtiTaskAuto&) = delete;
  CUtiTaskAuto& operator=(const CUtiTaskAuto&) = delete;

  /// Reads the file of this game in place of the one before. Where there is none, or it cannot be read, all
  /// names are "". Throws std::bad_alloc, with the names of the file before.
  void Load(unsigned long gameId);
  /// The task's name, "" where it has none and before the first Load. The string belongs to the
  /// object, and its next call overwrites it.
  CString& GetName(int task);

 private:
  CString text_;  // the path after Load, then the last name
  CKxIniFileReaderSuite suite_;
  CKxIniFileReader* reader_ = nullptr;  // of the suite; null before the first Load
};
