#pragma once
// A GUI application without a display, for the commands that draw text: a QImage or a
// printer needs one, a screen never. Qt's own notes about the platform are not the
// user's business: standard error is for the command's one line.
#include <QGuiApplication>
#include <memory>

namespace quillet {

std::unique_ptr<QGuiApplication> StartOffscreenGui();

}  // namespace quillet
