#pragma once

#include <array>
#include <string>

class TiniFile;

/// How the analyzer is connected, numbered as in the settings file.
enum class TcommMethod { usb = 1, ethernet = 2, serial = 3 };

/// The last choice of a connection: section `COMM` of `QT484pc.ini`, which is the host's.
struct TconnectionSettings {
  TcommMethod method = TcommMethod::usb;
  int serialPort = 0;  ///< the number in COM1, COM2, ...; 0 is none
  /// Each of at most three digits, possibly empty or above 255.
  std::array<std::string, 4> octets = {"127", "0", "0", "1"};

  /// What is missing has its default, any other method is USB. An octet that is more than three digits, or anything
  /// else, is empty: better no address than one that nobody entered.
  static TconnectionSettings load(const TiniFile& ini);
  /// Writes the method and what belongs to it. The keys of the other methods stay as they are in the file.
  void save(const TiniFile& ini) const;
};

/// A choice as the upload takes it.
struct TconnectionChoice {
  int method = 0;        ///< 0 USB, 1 Ethernet, 2 serial
  std::string portText;  ///< such as "COM5"; another text where there are no free ports
  std::array<int, 4> octets = {0, 0, 0,
                               0};  ///< most significant first, each 0 to 255; 0 for one that is no such number
};
