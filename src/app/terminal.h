// The little the command line needs to know about its terminal.
#pragma once

namespace vtt {

// True when standard error is an interactive terminal (progress is shown there only).
bool StderrIsTerminal();

}  // namespace vtt
