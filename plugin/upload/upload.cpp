#include "upload/upload.h"

#include <stdexcept>

#include "upload/progress.h"

namespace {

template <typename Tpointer>
auto& required(Tpointer* pointer) {
  if (!pointer) throw std::invalid_argument("Invalid Arguments For TuploadThread");
  return *pointer;
}

}  // namespace

TuploadThread::TuploadThread(TfrmProgress* dialog, TcommStruct* resources)
    : TdriverThread(dialog), upload_(required(dialog).upload()), resources_(required(resources)) {}

TtransferResult TuploadThread::exchange() {
  return transferRecords(upload_, resources_, *this);
}

void TuploadThread::showOperation(const char* text) {
  emit operationChanged(QString::fromLatin1(text));
}

void TuploadThread::showProgress(int position) {
  if (position == position_) return;
  position_ = position;
  emit progressChanged(position);
}
