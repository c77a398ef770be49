// CUtiIO: paths of files in a game's folder, and one small read.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CFileException.h>
#include <ZvUtiLib/platform/CKxIOUti.h>
#include <ZvUtiLib/platform/CString.h>

/// Stateless: any thread may call. A copy copies its base.
class ZVUTILIB_API CUtiIO : public CKxIOUti {
 public:
  CUtiIO();
  CUtiIO(const CUtiIO&);
  CUtiIO& operator=(const CUtiIO&);
  ~CUtiIO() override;

  /// The path of `fileName` (null counts as "") in the folder of the game: the program's folder, the
  /// game's code name, a backslash and the file name. An unknown id has an empty code name. Nothing is
  /// normalised, and nothing needs to exist.
  static CString GetGamePath(unsigned long gameId, const char* fileName);
  /// The first four bytes of the file, least significant first; 0 when it cannot be opened or is
  /// shorter. Throws CFileException when an open file cannot be measured or read.
  static unsigned long ReadDWordFromFile(const char* path);
};
