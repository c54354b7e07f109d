#pragma once

#include "simulator/analyzer.h"

/// What is done in place of the `right` answer (empty where none is due) when this fault is played by the analyzer.
/// `timeout` is the host's, in milliseconds.
Tsteps faultSteps(const Tfault& fault, const QByteArray& right, int timeout);
