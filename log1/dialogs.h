#pragma once
// Opening logic of each dialog: runs at load and at each activation.
#include "core/platform.h"

namespace quillet {
struct App;
void OpenDialog(App& app, DialogId dialog);
}  // namespace quillet
