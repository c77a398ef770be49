#include <ZvUtiLib/records/Items.h>

namespace {

constexpr int IsWithin(int id, int first, int last) { return id >= first && id <= last ? 1 : 0; }

}  // namespace

int IsIdBand20(int id) { return IsWithin(id, 20, 29); }
int IsIdBand4101(int id) { return IsWithin(id, 4101, 4109); }
int IsIdBand20Or4101(int id) { return IsIdBand20(id) | IsIdBand4101(id); }
int IsIdBand200Upper(int id) { return IsWithin(id, 200, 999) && id % 100 >= 50 ? 1 : 0; }
int IsIdBand5001(int id) { return IsWithin(id, 5001, 5999); }
int IsIdBand7201(int id) { return IsWithin(id, 7201, 8999); }
int IsIdBand9000(int id) { return IsWithin(id, 9000, 9099); }
int IsIdBand100000(int id) { return IsWithin(id, 100'000, 199'999); }
int IsIdBand200001(int id) { return IsWithin(id, 200'001, 209'999) || id == 7022 ? 1 : 0; }
int IsIdBand210001(int id) { return IsWithin(id, 210'001, 210'999); }
int IsIdBand211001(int id) { return IsWithin(id, 211'001, 211'999) || id == 7117 ? 1 : 0; }

unsigned ToBand20(unsigned id) { return id - 4081; }
