#pragma once
// waf list, cat and check: an archive read with the framework's own reader.
// Each returns the exit status: 0, or 1 with a message on standard error.
#include <string>

int List(const std::string& archive, int offset);
int Cat(const std::string& archive, int offset, const std::string& name);
int Check(const std::string& archive, int offset);
