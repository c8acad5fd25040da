#pragma once

// Shared libraries of our own that are opened when they are first needed: each holds what needs one large library, so
// that only the runs that need that library pay for loading it.

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle {

/// Where a module is: in `modules` or `../lib/brindle` of the folder that the running program lies in, whatever the
/// environment and the current folder. Empty when it is not there, or when somebody else than the user, the program's
/// owner and root may have put it there. Any thread.
std::string module_path(std::string_view file_name);

/// One opened module. Make one as a static object where it is used; it stays open until the program ends. Immutable;
/// any thread.
class Module {
 public:
  /// Opens the file at module_path(). What is not there, cannot be loaded, or was put there by an update since the
  /// program started (its brindle_module_revision() is not the one the program was built with) is a line in the
  /// program's messages and a module without functions.
  Module(const char* file_name, std::uint32_t revision);

  /// The function of that unmangled name, or null.
  template <class Function>
  Function* function(const char* name) const {
    return reinterpret_cast<Function*>(symbol(name));
  }

 private:
  void* symbol(const char* name) const;

  void* handle_ = nullptr;
};

}  // namespace brindle

/// Every module has it: the revision of the seam that it was built for.
extern "C" std::uint32_t brindle_module_revision();
