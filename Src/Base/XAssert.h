#ifndef SRC_BASE_XASSERT_H
#define SRC_BASE_XASSERT_H
// The program's own assertion: prints "Assertion failed: %s\n" (or, with a reason,
// "Assertion failed: %s (%s)\n") on standard output and then faults by storing to
// the null address. Unlike the standard assert it carries no file or line.
//
// A test or fuzz build may install a handler, which is called instead of the
// fault; a handler that returns falls back to the fault.

typedef void (*XAssertHandler)(const char* expression, const char* reason);

// Installs `handler` (null restores the fault) and returns the one before.
XAssertHandler XAssertSetHandler(XAssertHandler handler);

// `reason` is null for the plain form.
void XAssertFailed(const char* expression, const char* reason);

#define XASSERT(expr) ((expr) ? (void)0 : XAssertFailed(#expr, 0))
#define XASSERT_MSG(expr, reason) ((expr) ? (void)0 : XAssertFailed(#expr, #reason))

// The standard assertion (include <assert.h> to use it), reporting `line`
// instead of its own: for the few assertions whose line numbers the device's
// crash reports name, so that they stay where the reports expect them wherever
// the code around them moves.
#define ASSERT_AT_LINE(expr, line) \
  ((expr) ? (void)0 : __assert_fail(#expr, __FILE__, line, __extension__ __PRETTY_FUNCTION__))

#endif
