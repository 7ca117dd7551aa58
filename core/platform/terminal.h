#pragma once
// Whether an output stream is an interactive terminal (the status line is
// shown only there, never in a service's journal or a pipe).

#include <cstdio>

namespace nimbrel::platform {

bool isTerminal(std::FILE* stream);

}  // namespace nimbrel::platform

namespace nimbrel::platform {

// The terminal's width in columns; 0 when unknown.
int terminalColumns(std::FILE* stream);

}  // namespace nimbrel::platform
