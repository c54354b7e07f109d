#pragma once

#include <QMessageBox>
#include <functional>

#include "support/messages.h"

class QWidget;

/// Shows one modal message box, a `QMessageBox` whose `windowTitle()` is the caption and whose `text()` is the text,
/// both to the letter, and returns the button that closed it. Every box of the plug-in is shown by this function; to be
/// called on the user-interface thread. `owner` may be null: the box then stands for itself. Where
/// the owner is destroyed while its box is open, the result is `NoButton`.
QMessageBox::StandardButton showMessage(QWidget* owner, const TmessageText& message,
                                        QMessageBox::StandardButtons buttons = QMessageBox::Ok);

using TmessageBoxFunction =
    std::function<QMessageBox::StandardButton(QWidget* owner, const TmessageText&, QMessageBox::StandardButtons)>;

/// Puts another function in the place of the box itself, for tests; an empty one brings the box back.
void replaceMessageBox(TmessageBoxFunction function);
