// Calls the library as a host does, and ends with 1 at the first wrong answer.
#include <cstdio>

bool CheckServices();

int main() {
  if (!CheckServices()) return 1;
  std::puts("client: all answers right");
  return 0;
}
