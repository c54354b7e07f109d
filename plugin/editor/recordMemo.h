#pragma once

#include <QPlainTextEdit>
#include <string>
#include <string_view>

/// A box that wraps a record's one-line text over several lines.
///
/// The user's input, however it arrives, is cleaned (see `cleanedInput`) and cut to `maxLength`; a text that the
/// program sets stays as it is. Enter does nothing, and Tab leaves the box.
class TrecordMemo : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit TrecordMemo(QWidget* parent);

  /// The number of characters that the user may enter.
  int maxLength() const { return maxLength_; }
  void setMaxLength(int length) { maxLength_ = length; }

  /// The record's bytes. The box shows and returns every one of them, line breaks as symbols.
  void setRecordText(std::string_view bytes);
  std::string recordText() const;

  QSize sizeHint() const override { return minimumSizeHint(); }
  QSize minimumSizeHint() const override;

 signals:
  /// The box had no room for this end of what the user typed or pasted.
  void leftOut(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  QMimeData* createMimeDataFromSelection() const override;

 private:
  qsizetype room() const;

  int maxLength_ = 0;
};
