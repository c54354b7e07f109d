#include "shell/exportedNames.h"
#include "tools/runProgram.h"

QByteArrayList exportedNames(const char* library) {
  const QStringList arguments = {QStringLiteral("--dynamic"), QStringLiteral("--defined-only"),
                                 QStringLiteral("--format=just-symbols"), QString::fromLocal8Bit(library)};
  QByteArrayList names = runProgram(QStringLiteral(EQREC_SYMBOL_LISTER), arguments).printed.split('\n');
  names.removeAll({});
  return names;
}
