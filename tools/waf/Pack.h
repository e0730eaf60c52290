#pragma once
// waf pack: every file below a folder into one archive.
#include <string>

// Writes OUT through a temporary beside it, so that a failure leaves any earlier
// OUT as it was. 0 on success, 1 with a message on standard error otherwise.
int Pack(const std::string& out, const std::string& folder);
