#include <ZvUtiLib/data/Crc16.h>
#include <ZvUtiLib/records/Small.h>

namespace {
constexpr unsigned kHighIds = 65535;
}

int GetAmountMapChecksum(const AmountMap& amounts) {
  CStreamReader stream;
  stream << amounts;
  return static_cast<int>(Crc16(0, stream.Data(), static_cast<unsigned>(stream.Length())) & 0xFFFF);
}

unsigned ToHighId(unsigned id) { return id + kHighIds; }
unsigned FromHighId(unsigned id) { return id > kHighIds ? id - kHighIds : 0; }
