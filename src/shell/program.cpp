#include "shell/program.h"

#include <QApplication>
#include <QDir>

#include "forms/box.h"
#include "help/frmHelp.h"
#include "shell/frmMain.h"
#include "shell/frmSplash1.h"

namespace shell {

Program::Program(forms::ScreenRegistry& screens, const QString& programDir)
    : house_{.global = global_, .screens = screens}, lockPath_(company::InstanceLock::defaultPath()) {
    global_.app_dir = programDir;
    help_ = std::make_unique<help::HelpShelf>(global_);
    house_.help = [this](const QString& screen) { help_->helpOn(house_.screens.helpOn(screen)); };
}

Program::~Program() = default;

bool Program::Main() {
    instance_ = std::make_unique<company::InstanceLock>(lockPath_);
    if (!instance_->acquired()) {
        forms::tell(nullptr, QStringLiteral("すでに起動されています。"), QStringLiteral("二重起動"),
                    forms::BoxIcon::Information);
        return false;
    }
    QDir::setCurrent(global_.app_dir);
    {
        frmSplash1 splash(splashTime_);
        splash.showPainted();
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        splash.close();
    }
    QGuiApplication::restoreOverrideCursor();
    fMainForm_ = std::make_unique<frmMain>(house_, *help_);
    fMainForm_->show();
    return true;
}

}  // namespace shell
