#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "simulator/faults.h"

/// The options of the command line.
struct Toptions {
  std::optional<quint16> tcp;  ///< the port; 0 for any free one
  std::optional<quint16> usb;
  QString serial;  ///< the symbolic link to create to the pseudo-terminal; empty for none
  QString save;
  int baud = 0;
  int blocks = 1536;
  int timeout = 2000;  ///< milliseconds
  int latency = 0;     ///< milliseconds
  bool once = false;
  bool help = false;
  std::optional<Tfault> fault;
};

/// Parses the command line. Returns nothing, and `error` says why, if it is invalid.
std::optional<Toptions> parseOptions(const QStringList& arguments, QString& error);

/// What --help prints.
QString usage();
