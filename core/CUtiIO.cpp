#include <ZvUtiLib/CUtiIO.h>
#include <ZvUtiLib/GameCatalogue.h>

#include <cstdint>

#include "platform/mfc/CFile.h"

CUtiIO::CUtiIO() = default;
CUtiIO::CUtiIO(const CUtiIO&) = default;
CUtiIO& CUtiIO::operator=(const CUtiIO&) = default;
CUtiIO::~CUtiIO() = default;

CString CUtiIO::GetGamePath(unsigned long gameId, const char* fileName) {
  CString path = GetAppPath();
  path += GetGameCodeName(static_cast<GameId>(gameId)).c_str();
  path += '\\';
  path += fileName;
  return path;
}

unsigned long CUtiIO::ReadDWordFromFile(const char* path) {
  unsigned char bytes[4] = {};
  CFile file;
  if (!file.Open(path, CFile::modeRead) || file.GetLength() < sizeof bytes) return 0;
  file.Read(bytes, sizeof bytes);
  std::uint32_t word = 0;
  for (std::size_t i = sizeof bytes; i-- > 0;) word = word << 8 | bytes[i];
  return word;
}
