#pragma once

enum class TmessageIcon { information, warning, error };

/// What one message box says. The texts are fixed and live as long as the module; "\n" and "\r" are line breaks.
struct TmessageText {
  const char* text;
  const char* caption;
  TmessageIcon icon;
};
