#pragma once

// The toolkit's own style, with what it draws too faintly: the outlines of check boxes and radio buttons, and where in
// the window the keyboard is. Main thread.

namespace brindle {

/// Uses it for the whole program, unless the desktop brought a style of its own.
void use_window_style();

}  // namespace brindle
