#include "forms/progress.h"

namespace forms {

namespace {

constexpr int kSteps = 1000;

}  // namespace

ProgressBox::ProgressBox(QWidget* parent, const QString& text)
    : dialog_(text, QStringLiteral("中止(&C)"), 0, kSteps, parent) {
    constexpr int kPatience = 500;  // milliseconds
    dialog_.setWindowModality(Qt::WindowModal);
    dialog_.setMinimumDuration(kPatience);
    dialog_.setWindowTitle(parent->window()->windowTitle());
}

store::Progress ProgressBox::step() {
    return [this](qint64 done, qint64 whole) {
        dialog_.setValue(static_cast<int>(whole > 0 ? done * (kSteps - 1) / whole : 0));
        return !dialog_.wasCanceled();
    };
}

}  // namespace forms
