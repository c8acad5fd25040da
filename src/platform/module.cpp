#include "platform/module.h"

#include <dlfcn.h>

#include <string>

#include "platform/message_log.h"

namespace brindle {

Module::Module(const char* file_name, std::uint32_t revision) : handle_(::dlopen(file_name, RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) {
    log_failure("Module", ::dlerror());
    return;
  }
  auto* const revision_there = function<std::uint32_t()>("brindle_module_revision");
  if (revision_there != nullptr && revision_there() == revision) return;
  log_failure("Module", std::string(file_name) + " is of another version: start the program again");
  handle_ = nullptr;  // left open: what it started must not lose its code
}

void* Module::symbol(const char* name) const {
  return handle_ == nullptr ? nullptr : ::dlsym(handle_, name);
}

}  // namespace brindle
