#include "cli/commands.h"

int main(int count, char** words) {
  return static_cast<int>(brindle::run_program(count - 1, words + 1));
}
