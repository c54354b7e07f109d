#pragma once

#include <QByteArrayList>

/// The names that a shared library exports.
QByteArrayList exportedNames(const char* library);
