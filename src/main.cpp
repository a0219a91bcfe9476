#include <QApplication>

#include "company/places.h"
#include "main_screens.h"
#include "shell/program.h"
#include "widgets/platform_messages.h"
#include "widgets/theme.h"

int main(int argc, char** argv) {
    widgets::dropSizeHintMessage();
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ひなた堂ミント"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MINT_VERSION));
    widgets::applyTheme(app);
    forms::ScreenRegistry screens;
    registerScreens(screens);
    shell::Program program(screens, company::programFolder(QCoreApplication::applicationDirPath()));
    return program.Main() ? QApplication::exec() : 0;
}
