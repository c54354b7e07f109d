#include "comm/commParameters.h"

namespace {

struct TtargetOf {
  std::string operator()(const TusbParameters&) const { return "USB device"; }
  std::string operator()(const TserialParameters& parameters) const { return parameters.portName.data(); }
  std::string operator()(const TethernetParameters& parameters) const {
    std::string text;
    for (const auto octet : parameters.octets) text += (text.empty() ? "" : ".") + std::to_string(octet);
    return text + ':' + std::to_string(parameters.port);
  }
};

}  // namespace

std::string targetOf(const TcommParameters& parameters) {
  return std::visit(TtargetOf(), parameters);
}
