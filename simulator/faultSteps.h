#pragma once

#include "simulator/analyzer.h"

/// The steps that replace the `right` answer (empty if none is due) when the analyzer plays this fault. `timeout` is
/// the host's, in milliseconds.
Tsteps faultSteps(const Tfault& fault, const QByteArray& right, int timeout);
