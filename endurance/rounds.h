#pragma once

#include <QtGlobal>

// How long the proofs are: few rounds in the daily tests, many in `run`.

inline int numberIn(const char* variable, int otherwise) {
  return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : otherwise;
}

inline int proofRounds() {
  return numberIn("EQREC_ROUNDS", 15);
}

/// The seed of the first round.
inline unsigned proofSeed() {
  return static_cast<unsigned>(numberIn("EQREC_SEED", 1));
}
