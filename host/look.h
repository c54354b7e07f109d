#pragma once

/// Gives all windows this size of text, in points, and on request a dark palette: how the program looks to users who
/// have set up their desktop so.
void setLook(int points, bool isDark);
