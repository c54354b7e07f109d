#pragma once

#include <QLineEdit>
#include <string>
#include <string_view>

/// A one-line box for a record's text. Whatever way a text enters it, it enters cleaned (see `cleanedInput`) and cut to
/// `maxLength`; a text set by the program stays as it is.
class TrecordEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit TrecordEdit(QWidget* parent);

  /// The record's bytes, every one of them shown and given back.
  void setRecordText(std::string_view bytes);
  std::string recordText() const;

  /// Takes the slot's place in the context menu, too, which looks it up by name.
  Q_SLOT void paste();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void enter(const QString& text);
  void endUndoStep();
};
