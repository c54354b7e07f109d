#pragma once

#include <QtGlobal>

/// Makes the coming close of a TCP socket a reset of the connection.
void closeHard(qintptr socket);
