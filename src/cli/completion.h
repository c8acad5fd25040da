#pragma once

#include <string>

namespace brindle {

// Scripts that make a shell complete commands, methods, options and their choices; PATHs are completed as files.

std::string bash_completion();
/// The one for bash, which zsh runs too.
std::string zsh_completion();
std::string fish_completion();

}  // namespace brindle
