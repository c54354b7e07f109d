#pragma once

#include <QLineEdit>
#include <string>
#include <string_view>

/// A one-line box for a record's text. The user's input, however it arrives, is cleaned (see `cleanedInput`) and cut to
/// `maxLength`; a text that the program sets stays as it is.
class TrecordEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit TrecordEdit(QWidget* parent);

  /// The record's bytes. The box shows and returns every one of them.
  void setRecordText(std::string_view bytes);
  std::string recordText() const;

  /// Also replaces the base class's slot in the context menu, which finds it by name.
  Q_SLOT void paste();

 signals:
  /// The box had no room for this end of what the user typed or pasted.
  void leftOut(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  qsizetype room() const;
  void enter(const QString& text);
  void endUndoStep();
};
