#pragma once

// What every program of ours sees to before anything else.

namespace brindle {

/// Call first in main(), once.
/// Descriptors 0, 1 and 2 that the program was started without are taken by something that can neither be read nor
/// written (EBADF), or the next file to be opened would get what is meant for the person. A file that grows beyond the
/// limit (ulimit -f) is an error of writing, EFBIG, and not the end of the program.
void set_up_process();

}  // namespace brindle
