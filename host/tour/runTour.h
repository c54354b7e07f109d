#pragma once

class QString;

/// Runs the guided tour of the list in the folder `sample`, with pictures in the folder `pictures`. Returns the exit
/// status: 0, or 1 where a step failed.
int runTour(const QString& modulePath, const QString& sample, const QString& pictures);
