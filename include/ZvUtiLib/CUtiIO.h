// CUtiIO: builds the paths of files in a game's folder, and reads a number from a file.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CFileException.h>
#include <ZvUtiLib/platform/CKxIOUti.h>
#include <ZvUtiLib/platform/CString.h>

/// Stateless: any thread may call. Copying copies the base, too.
class ZVUTILIB_API CUtiIO : public CKxIOUti {
 public:
  CUtiIO();
  CUtiIO(const CUtiIO&);
  CUtiIO& operator=(const CUtiIO&);
  ~CUtiIO() override;

  /// Returns the path of `fileName` (null counts as "") in the game's folder: the program's folder, the
  /// game's code name, a backslash and the file name. The code name of an unknown id is empty. The path is
  /// not normalised and need not exist.
  static CString GetGamePath(unsigned long gameId, const char* fileName);
  /// Returns the first four bytes of the file as a little-endian number; 0 if the file cannot be opened or is
  /// shorter. Throws CFileException if the size of an open file cannot be determined or the file cannot be
  /// read.
  static unsigned long ReadDWordFromFile(const char* path);
};
