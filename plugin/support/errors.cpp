#include "support/errors.h"

#include <utility>

TEqRecException::TEqRecException(std::string text, std::string fileName, int line)
    : text_(std::move(text)), fileName_(std::move(fileName)), line_(line) {}
