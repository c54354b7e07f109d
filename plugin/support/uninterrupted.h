#pragma once

#include <system_error>

/// Makes a call that reports its failure in an error code, again while a signal interrupts it.
template <typename Tcall>
auto uninterrupted(std::error_code& error, Tcall call) {
  auto result = call(error);
  while (error == std::errc::interrupted) result = call(error);
  return result;
}
