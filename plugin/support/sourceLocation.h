#pragma once

#include <version>

/// `std::source_location`, or what came before it where the compiler does not yet support the standard one.
#ifdef __cpp_lib_source_location
#include <source_location>
using TsourceLocation = std::source_location;
#else
#include <experimental/source_location>
using TsourceLocation = std::experimental::source_location;
#endif
