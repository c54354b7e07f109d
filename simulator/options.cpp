#include "simulator/options.h"

#include <QCommandLineParser>

namespace {

constexpr int maxPort = 65535;
constexpr int maxBlocks = 1000000;
constexpr int maxBaud = 100000000;
constexpr int maxTimeout = 3600000;

/// The program's options by name. A command line is accepted as a whole or not at all.
class Tparser {
 public:
  Tparser() {
    add("tcp", "PORT", "Listens for TCP connections; 0 for any free port. Without any link option: 60601.");
    add("serial", "LINK", "Opens a pseudo-terminal and makes LINK a symbolic link to its far end.");
    add("usb", "PORT", "Listens for the stand-in D2XX driver, which uses 60602 by default.");
    add("save", "FILE", "Saves the image of each complete upload.");
    add("baud", "N", "Paces both directions to this line speed, 10 bits a byte; 0 for no pacing.");
    add("blocks", "N", "Blocks of an upload; 1536 by default.");
    add("timeout", "MS", "The host's time-out, by which late answers are timed; 2000 by default.");
    add("latency", "MS",
        "Waits before each answer, as a USB chip does with few bytes (16 by default there); 0 by default.");
    add("fault", "KIND[@WHERE]",
        "Plays a fault once: " + kinds() +
            "; WHERE is handshake, command, a block's number, last, or after (the last answer).");
    add("once", nullptr, "Ends after the first complete upload (status 0) or the first connection with an error (1).");
    add("help", nullptr, "Prints this help.");
  }

  bool read(const QStringList& arguments) {
    if (!parser_.parse(arguments)) return refuse(parser_.errorText());
    if (!parser_.positionalArguments().isEmpty())
      return refuse(QStringLiteral("Unexpected argument \"%1\".").arg(parser_.positionalArguments().first()));
    return true;
  }

  bool isSet(const char* name) const { return parser_.isSet(QLatin1String(name)); }
  QString text(const char* name) const { return parser_.value(QLatin1String(name)); }

  /// The option's number, or `otherwise` if the option is not given.
  int number(const char* name, int least, int most, int otherwise) {
    if (!isSet(name)) return otherwise;
    bool isNumber = false;
    const int value = text(name).toInt(&isNumber);
    if (!isNumber || value < least || value > most)
      refuse(QStringLiteral("--%1 needs a number from %2 to %3.").arg(QLatin1String(name)).arg(least).arg(most));
    return value;
  }

  bool refuse(const QString& why) {
    if (error.isEmpty()) error = why;
    return false;
  }

  QString help() const { return parser_.helpText(); }

  QString error;

 private:
  static QByteArray kinds() {
    QByteArrayList names;
    for (const TfaultTraits& traits : faultTable()) names << traits.name;
    return names.join(", ");
  }

  void add(const char* name, const char* value, const QByteArray& description) {
    parser_.addOption({QString::fromLatin1(name), QString::fromLatin1(description), QString::fromLatin1(value)});
  }

  QCommandLineParser parser_;
};

std::optional<quint16> portOf(Tparser& parser, const char* name) {
  if (!parser.isSet(name)) return {};
  return static_cast<quint16>(parser.number(name, 0, maxPort, 0));
}

bool isServed(const Toptions& options, TlinkKind link) {
  if (link == TlinkKind::serial) return !options.serial.isEmpty();
  return link == TlinkKind::tcp ? options.tcp.has_value() : options.usb.has_value();
}

void readFault(Tparser& parser, Toptions& options) {
  if (!parser.isSet("fault")) return;
  QString why;
  options.fault = parseFault(parser.text("fault"), options.blocks, why);
  if (!options.fault) {
    parser.refuse(QStringLiteral("--fault: %1.").arg(why));
    return;
  }
  for (const TlinkKind link : {TlinkKind::tcp, TlinkKind::serial, TlinkKind::usb}) {
    if (isServed(options, link) && options.fault->existsOn(link)) return;
  }
  parser.refuse(QStringLiteral("--fault: \"%1\" does not exist on any of these links.").arg(parser.text("fault")));
}

}  // namespace

std::optional<Toptions> parseOptions(const QStringList& arguments, QString& error) {
  Tparser parser;
  Toptions options;
  if (parser.read(arguments)) {
    options.help = parser.isSet("help");
    options.tcp = portOf(parser, "tcp");
    options.usb = portOf(parser, "usb");
    options.serial = parser.text("serial");
    if (parser.isSet("serial") && options.serial.isEmpty()) parser.refuse(QStringLiteral("--serial needs a path."));
    if (!options.tcp && !options.usb && options.serial.isEmpty()) options.tcp = 60601;
    options.save = parser.text("save");
    options.baud = parser.number("baud", 0, maxBaud, options.baud);
    options.blocks = parser.number("blocks", 1, maxBlocks, options.blocks);
    options.timeout = parser.number("timeout", 1, maxTimeout, options.timeout);
    options.latency = parser.number("latency", 0, maxTimeout, options.latency);
    options.once = parser.isSet("once");
    readFault(parser, options);
  }
  error = parser.error;
  return error.isEmpty() ? std::optional(options) : std::nullopt;
}

QString usage() {
  return Tparser().help();
}
