#include "comm/handshake.h"

#include "comm/commandLayer.h"

TcommOutcome greetAnalyzer(VMRcommClass& analyzer, std::span<char> reply) {
  return runCommStep(TcommStep::handshake, [&]() -> TcommOutcome {
    if (analyzer.open() != 0) return couldNotInitialize;
    // A failed exchange has closed the channel.
    if (analyzer.getData(handshakeCommand, commandLength, reply.data(), 1) != 0) return couldNotCommunicate;
    return std::nullopt;
  });
}
