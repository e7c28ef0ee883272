// Conversations that arrive with the download work: the clock dialog. Until then it is
// not shown.
#include "core/app.h"
#include "link/live_reading.h"

namespace quillet {

void HideTimesetDialog(App& app) { (void)app; }

}  // namespace quillet
