#pragma once

class FrameWindow;

// Dispatches messages until the program is to end. Returns the exit code.
int RunMessageLoop(FrameWindow& frame);
