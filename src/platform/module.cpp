#include "platform/module.h"

#include <dlfcn.h>

#include "platform/message_log.h"

namespace brindle {

Module::Module(const char* file_name) : handle_(::dlopen(file_name, RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) log_failure("Module", ::dlerror());
}

void* Module::symbol(const char* name) const {
  return handle_ == nullptr ? nullptr : ::dlsym(handle_, name);
}

}  // namespace brindle
