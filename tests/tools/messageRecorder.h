#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include "support/messageBox.h"

/// Replaces all message boxes during its lifetime: records their captions and the last informative text, and answers
/// them.
class TmessageRecorder {
 public:
  TmessageRecorder() {
    replaceMessageBox([this](QWidget*, const TmessageText& message, auto, const QString& informative) {
      captions_ << QByteArray(message.caption);
      informativeText = informative;
      return answer;
    });
  }
  TmessageRecorder(const TmessageRecorder&) = delete;
  TmessageRecorder& operator=(const TmessageRecorder&) = delete;
  ~TmessageRecorder() { replaceMessageBox({}); }

  /// The captions since the last call.
  QByteArrayList takeCaptions() { return std::exchange(captions_, {}); }

  QMessageBox::StandardButton answer = QMessageBox::Ok;
  QString informativeText;

 private:
  QByteArrayList captions_;
};
