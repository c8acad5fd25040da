// limit_nothing: what starting a C++ program costs.

#include <iostream>

int main() {
  std::cout << "nothing\n";
}
