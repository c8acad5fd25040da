#pragma once

// Shared libraries of our own that are opened when they are first needed: each holds what needs one large library, so
// that only the runs that need that library pay for loading it.

namespace brindle {

/// One opened module. Make one as a static object where it is used; it stays open until the program ends. Immutable;
/// any thread.
class Module {
 public:
  /// Looks for the file along the program's own search path. What is not there, or cannot be loaded, is a line in the
  /// program's messages and a module without functions.
  explicit Module(const char* file_name);

  /// The function of that unmangled name, or null.
  template <class Function>
  Function* function(const char* name) const {
    return reinterpret_cast<Function*>(symbol(name));
  }

 private:
  void* symbol(const char* name) const;

  void* handle_;
};

}  // namespace brindle
