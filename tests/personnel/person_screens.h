#pragma once
#include <gtest/gtest.h>

#include "forms/global_record.h"
#include "forms/screens.h"
#include "reports/workbook.h"
#include "screen_driver.h"
#include "support/company_fixture.h"
#include "widgets/form.h"

namespace persontest {

using namespace Qt::StringLiterals;
using namespace support;
using forms::BoxAnswer;

/// Personnel screens over a company on 2026/12/1; sheets are caught before they are written.
class PersonScreens : public ::testing::Test {
  protected:
    void openCompany() {
        global_.cn_main = folder_.open();
        global_.clock = [] { return QDate(2026, 12, 1); };
        global_.panels.company = u"見本商事"_s;
    }
    void sql(const QString& statement, const store::Binds& binds = {}) {
        global_.cn_main->execute(statement, binds);
    }
    /// The rows of a query, one text each: cells between bars, Null as a dash.
    QStringList read(const QString& query) { return textRows(*global_.cn_main, query); }
    template <class Screen, class... Args>
    void open(const ScreenDriver::Step& step, Args&... args) {
        Screen form(house_, args..., nullptr);
        driver_.run(form, [&](QDialog& shown) {
            step(shown);
            if (shown.isVisible()) shown.reject();
        });
    }
    /// A screen of a next step that only tells that it was there.
    void addPlain(const QString& name) {
        screens_.add(
            name, [name](forms::House&, QWidget* parent) { return new widgets::Form(name, name, parent); });
    }

    CompanyFolder folder_;
    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_{global_, screens_};
    std::vector<std::pair<QString, reports::SheetGrid>> sent_;  ///< files' titles and what went into them
    const reports::SheetFolder sheets_{
        {folder_.programDir() + u"/out"_s, [this](const QString&, const reports::Sheet& sheet) {
             sent_.push_back({sheet.title, sheet.grid});
         }}};
    ScreenDriver driver_;
};

}  // namespace persontest
