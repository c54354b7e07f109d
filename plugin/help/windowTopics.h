#pragma once

#include <QString>

class QWidget;

/// The guide's start page.
inline constexpr const char* guideStart = "EquipmentRecord.html";

/// The section of the guide about the window of that object name, as in "editor.html#fields"; empty if it has none.
QString topicOfWindow(const QString& name);

/// The section about the message with this caption and text; empty if it is no message of the plug-in.
QString topicOfMessage(const QString& caption, const QString& text);

/// The section about a window. One without a section, as the system's dialogs, has that of the window that it belongs
/// to; empty if that has none, either.
QString topicOf(const QWidget* window);
