#include <cstdio>

int main() {
  std::puts("brindle " BRINDLE_VERSION);
  return 0;
}
