#pragma once

#include <QMessageBox>
#include <QString>
#include <functional>

#include "support/messageText.h"

class QWidget;

/// Shows one modal `QMessageBox` with exactly this caption and text, and returns the button that closed it. Shows every
/// message box of the plug-in, on the user-interface thread. `owner` may be null. If the owner is destroyed while its
/// box is open, the result is `NoButton`. `informativeText` stands below the text and holds no markup.
QMessageBox::StandardButton showMessage(QWidget* owner, const TmessageText& message,
                                        QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                        const QString& informativeText = {});

/// Shows a box with OK that comes to the front, also over the windows of other programs, as the user may be elsewhere
/// when it opens. A minimized owner is restored.
void showMessageInFront(QWidget* owner, const TmessageText& message, const QString& informativeText);

using TmessageBoxFunction = std::function<QMessageBox::StandardButton(
    QWidget* owner, const TmessageText& message, QMessageBox::StandardButtons buttons, const QString& informativeText)>;

/// Replaces the box by a function, for tests. An empty function restores the box.
void replaceMessageBox(TmessageBoxFunction function);
