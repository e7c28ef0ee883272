#pragma once
// The main window's composition of the subsystems, handed to each App it runs.
#include "hub/app.h"

namespace quillet {

// The dialog routing and the graph redraw that the subsystems reach through the hub.
const AppHooks& Log1Hooks();

}  // namespace quillet
