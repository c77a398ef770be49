// Crashes inside the DLL, for the debugger to find the line.
#include <ZvUtiLib/ZvUtiLib.h>

int main() {
  CUtiNumber::InsertSeparator(1234567LL, *reinterpret_cast<CString*>(16));
  return 0;
}
