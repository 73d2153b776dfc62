#pragma once

// One statement of a routine, where the frame is called `frame`.
#define STEP(...) frame.step([&] { __VA_ARGS__; })
