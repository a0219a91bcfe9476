#pragma once
#include <gtest/gtest.h>

#include <ostream>

#include "store/date_text.h"
#include "support/company_fixture.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << text.toStdString();
}

namespace preptest {

using namespace Qt::StringLiterals;

enum class Content { Empty, Sample };

inline QDate d(const QString& date) {
    return store::requireDate(date);
}

/// A company with short ways to write into it and to read from it.
class RunCompany : public ::testing::Test {
  protected:
    explicit RunCompany(Content content) : owner_(make(content)), cn_(*owner_) {}

    void sql(const QString& statement, const store::Binds& binds = {}) { cn_.execute(statement, binds); }
    /// The rows of a query, one text each: cells between bars, Null as a dash.
    QStringList read(const QString& query, const store::Binds& binds = {}) {
        return support::textRows(cn_, query, binds);
    }
    void expectUnchanged(const QByteArray& before) {
        EXPECT_EQ(support::firstDifference(before, support::dump(cn_)).toStdString(), "");
        EXPECT_FALSE(cn_.inTransaction());
    }

    support::CompanyFolder folder_;
    std::unique_ptr<store::Connection> owner_;
    store::Connection& cn_;

  private:
    std::unique_ptr<store::Connection> make(Content content) {
        content == Content::Sample ? folder_.makeSample() : folder_.makeEmpty();
        return folder_.open();
    }
};

}  // namespace preptest
