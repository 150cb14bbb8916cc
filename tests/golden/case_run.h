// Runs the compiler on a copy of a case, in this process.
#pragma once

#include "expectation.h"
#include "golden_case.h"

namespace Orvane::Golden {

// The copy lies in a temporary folder, which is the working directory and "$DIR" in what is
// printed. The toolchain is a fake that accepts every program; the generated files are taken when
// it is started, before the compiler cleans them away.
Outcome runCase(const GoldenCase& golden);

} // namespace Orvane::Golden
