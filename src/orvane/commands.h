// The commands, each with its exit status. What a command is asked for goes to `out`; progress,
// summaries and what went wrong go to `err`.
#pragma once

#include "orvane/command_line.h"
#include "orvane/output.h"

namespace Orvane {

inline constexpr int allIsWell = 0;
inline constexpr int somethingIsWrong = 1;
inline constexpr int wrongUse = 2;

int runCheck(const CommandRequest& request, Output& out, Output& err);
int runBuild(const CommandRequest& request, Output& out, Output& err);
int runRun(const CommandRequest& request, Output& err);
int runWatch(const CommandRequest& request, Output& err);
int runNew(const CommandRequest& request, Output& out, Output& err);
int runDoctor(Output& out);
int runExplain(const CommandRequest& request, Output& out, Output& err);

} // namespace Orvane
