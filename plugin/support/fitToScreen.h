#pragma once

class QWidget;

/// Makes a window fit its font and its screen. Its buttons get the room that their texts need. When its contents need
/// more room than the screen has, as with a large font on a small screen, they scroll, and the window takes the room
/// that there is; also when they grow later. To be called before the window is shown; again has no effect.
void fitToScreen(QWidget& window);
