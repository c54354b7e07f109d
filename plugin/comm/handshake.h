#pragma once

#include <span>

#include "comm/commMessages.h"

class VMRcommClass;

/// Opens the analyzer's channel, greets the analyzer and takes its one block of an answer into `reply`, which must have
/// the channel's block size. Where the result is nothing the channel is open, and an upload may start.
TcommOutcome greetAnalyzer(VMRcommClass& analyzer, std::span<char> reply);
