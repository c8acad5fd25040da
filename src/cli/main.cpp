#include "cli/commands.h"
#include "platform/process.h"

int main(int count, char** words) {
  brindle::set_up_process();
  return static_cast<int>(brindle::run_program(count - 1, words + 1));
}
