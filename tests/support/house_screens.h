#pragma once
#include <gtest/gtest.h>

#include <QDir>
#include <QMainWindow>
#include <QPushButton>

#include "forms/global_record.h"
#include "forms/screens.h"
#include "screen_driver.h"
#include "support/company_fixture.h"
#include "widgets/form.h"

namespace support {

using namespace Qt::StringLiterals;

/// What every screen gets from the house, with children that show nothing.
class HouseScreens : public testing::Test {
  protected:
    HouseScreens() {
        house_.help = [this](const QString& screen) { helped_ << screen; };
    }
    void addScreen(const QString& name) {
        screens_.add(
            name, [name](forms::House&, QWidget* parent) { return new widgets::Form(name, name, parent); });
    }

    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_{global_, screens_};
    QStringList helped_;
    ScreenDriver driver_;
};

/// A main window with its button back to the menu, and the company 甲社 beside the program.
class OverMain : public HouseScreens {
  protected:
    OverMain() {
        company_.makeEmpty(u"甲社"_s);
        global_.app_dir = company_.programDir();
        main_.setObjectName(u"frmMain"_s);
        main_.setCentralWidget(new QWidget(&main_));
        command1_ = new QPushButton(main_.centralWidget());
        command1_->setObjectName(u"Command1"_s);
        main_.show();
    }
    ~OverMain() override { QDir::setCurrent(QDir::rootPath()); }

    CompanyFolder company_;
    QMainWindow main_;
    QPushButton* command1_;
};

}  // namespace support
