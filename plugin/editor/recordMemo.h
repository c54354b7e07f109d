#pragma once

#include <QPlainTextEdit>
#include <string>
#include <string_view>

/// A box of several lines for a record's text, which is one line nevertheless: it breaks only where the box ends.
///
/// Whatever way a text enters it, it enters cleaned (see `cleanedInput`) and cut to the longest length; a text set by
/// the program stays as it is. Enter does nothing, and Tab leaves the box.
class TrecordMemo : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit TrecordMemo(QWidget* parent);

  /// The most characters that the user may enter.
  int maxLength() const { return maxLength_; }
  void setMaxLength(int length) { maxLength_ = length; }

  /// The record's bytes, every one of them shown and given back. Line breaks are shown as symbols.
  void setRecordText(std::string_view bytes);
  std::string recordText() const;

  QSize sizeHint() const override { return minimumSizeHint(); }
  QSize minimumSizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  QMimeData* createMimeDataFromSelection() const override;

 private:
  qsizetype room() const;

  int maxLength_ = 0;
};
