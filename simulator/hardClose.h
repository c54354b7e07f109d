#pragma once

#include <QtGlobal>

/// Makes the next close of a TCP socket reset the connection.
void closeHard(qintptr socket);
