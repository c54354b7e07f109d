#pragma once

#include <array>
#include <string>

#include "comm/commParameters.h"

class TiniFile;

/// The last choice of a connection, kept in section `COMM` of the host's `QT484pc.ini`.
struct TconnectionSettings {
  TcommMethod method = TcommMethod::usb;
  int serialPort = 0;  ///< the number in COM1, COM2, ...; 0 for none
  /// Each has at most three digits; it may be empty or above 255.
  std::array<std::string, 4> octets = {"127", "0", "0", "1"};

  /// Missing keys have their defaults, and an unknown method is USB. An octet that is not a number of at most three
  /// digits is empty: better no address than one that nobody entered.
  static TconnectionSettings load(const TiniFile& ini);
  /// Writes the method and its own keys; no serial port where there is none. The keys of the other methods keep their
  /// values in the file.
  void save(const TiniFile& ini) const;
};

/// A choice as the upload needs it.
struct TconnectionChoice {
  TcommMethod method = TcommMethod::usb;
  std::string portText;         ///< such as "COM5"; another text if there are no free ports
  std::array<int, 4> octets{};  ///< most significant first, each 0 to 255; 0 for an invalid one
};
