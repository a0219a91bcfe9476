#include <gtest/gtest.h>

#include <QApplication>

#include "screen_driver.h"
#include "widgets/platform_messages.h"
#include "widgets/theme.h"

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    widgets::dropSizeHintMessage();
    QApplication app(argc, argv);
    QFont font = QApplication::font();
    if (const int points = qEnvironmentVariableIntValue("MINT_TEST_POINTS")) font.setPointSize(points);
    QApplication::setFont(font);
    widgets::applyTheme(app, widgets::Scheme::Light);
    testing::InitGoogleTest(&argc, argv);
    support::ScreenDriver::setFailureSink([](const QString& text) { ADD_FAILURE() << text.toStdString(); });
    return RUN_ALL_TESTS();
}
