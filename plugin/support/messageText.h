#pragma once

enum class TmessageIcon { information, question, warning, error };

/// The contents of one message box. The texts are constants; "\n" and "\r" are line breaks.
struct TmessageText {
  const char* text;
  const char* caption;
  TmessageIcon icon;
};
