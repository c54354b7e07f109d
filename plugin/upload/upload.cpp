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
    : dialog_(required(dialog)), resources_(required(resources)) {}

TuploadThread::~TuploadThread() {
  giveUp();
  wait();
  static_cast<void>(isCompleted());  // synchronizes with everything that the thread wrote
}

void TuploadThread::run() {
  const TtransferResult result = transferRecords(dialog_.upload(), resources_, *this);
  if (result.message) boxes_.show(&dialog_, *result.message, QString::fromStdString(result.message->advice));
  completed_.store(result.completed, std::memory_order_release);
}

bool TuploadThread::isCancelled() const {
  return dialog_.isCancelled();
}

void TuploadThread::showOperation(const char* text) {
  emit operationChanged(QString::fromLatin1(text));
}

void TuploadThread::showProgress(int position) {
  if (position == position_) return;
  position_ = position;
  emit progressChanged(position);
}
