#include "log1/hooks.h"

#include "graph/panel.h"
#include "log1/dialogs.h"

namespace quillet {

const AppHooks& Log1Hooks() {
  static const AppHooks hooks{OpenDialog, RedrawGraph};
  return hooks;
}

}  // namespace quillet
