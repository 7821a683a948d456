#pragma once

#include <functional>

class QObject;

// Work that nobody sees is put off until the window has drawn its first frame: touching TLS alone
// takes a tenth of the time until then. A program that expects no frame, as most tests, gets its
// work done at once. GUI thread only.
namespace FirstFrame {

// For 300 ms at the most: a window need not be drawn at all, and may be gone by then.
void expect();
// Has the event loop do what was put off, in the order in which it was asked for. Every frame may
// call it.
void drawn();

// At once, or when the frame is drawn, unless the context is gone by then.
void then(const QObject *context, std::function<void()> work);

} // namespace FirstFrame
