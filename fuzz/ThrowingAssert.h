#pragma once
// Included ahead of every source of the fuzz build. The harnesses turn a failed
// standard assertion into an exception (FuzzSupport.cpp), but the C library
// declares its assertion handlers as throwing nothing, so a caller would be left
// without the code that ends its objects on the way out: an assertion would leak
// the files and memory it held, and a long run would exhaust them. Declaring the
// handlers here, without that promise, and keeping the library's declarations
// out, lets the stack unwind as it does for any exception.
#define _ASSERT_H_DECLS
#ifdef __cplusplus
extern "C" {
#endif
void __assert_fail(const char* assertion, const char* file, unsigned int line, const char* function)
    __attribute__((__noreturn__));
void __assert_perror_fail(int errnum, const char* file, unsigned int line, const char* function)
    __attribute__((__noreturn__));
void __assert(const char* assertion, const char* file, int line) __attribute__((__noreturn__));
#ifdef __cplusplus
}
#endif
