#include "log1/dialogs.h"

#include "hub/app.h"
#include "log1/language.h"
#include "graph/annotation.h"
#include "link/link_supervision.h"
#include "link/timeset.h"
#include "measure/probe_table.h"
#include "printing/print_data.h"
#include "profiles/profile_dialog.h"
#include "storage/text_export.h"

namespace quillet {

void OpenDialog(App& app, DialogId dialog) {
  switch (dialog) {
    case DialogId::frmPort: OpenFrmPort(app); break;
    case DialogId::langfrm: OpenLangfrm(app); break;
    case DialogId::about2: OpenAbout2(app); break;
    case DialogId::frmTimeset: OpenFrmTimeset(app); break;
    case DialogId::Func1: OpenProbeDialog(app, 1); break;
    case DialogId::FUNC2: OpenProbeDialog(app, 2); break;
    case DialogId::FUNC3: OpenProbeDialog(app, 3); break;
    case DialogId::Describe: OpenDescribe(app); break;
    case DialogId::SaveOpt: OpenSaveOpt(app); break;
    case DialogId::custom: OpenProfileDialog(app, ProfileFamily::Custom); break;
    case DialogId::input100mv: OpenProfileDialog(app, ProfileFamily::Mv100); break;
    case DialogId::input10v: OpenProfileDialog(app, ProfileFamily::V10); break;
    case DialogId::input420: OpenProfileDialog(app, ProfileFamily::Ma420); break;
    case DialogId::inputbipo100mv: OpenProfileDialog(app, ProfileFamily::Bipo100mv); break;
    case DialogId::inputbipo10mv: OpenProfileDialog(app, ProfileFamily::Bipo10mv); break;
    case DialogId::PrintOpt: OpenPrintOpt(app); break;
    default: break;
  }
}

}  // namespace quillet
