#include "store/work.h"

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

namespace store {
namespace {

/// One thread. In the order of their beginning.
std::vector<Work*> works;
Work::Tally counts;

}  // namespace

Work::Work(Connection& connection, QString label, Reserve reserve)
    : connection_(connection), label_(std::move(label)), failures_(std::uncaught_exceptions()) {
    begin(reserve);
}

Work::Work(Connection& connection, Reserve reserve) : Work(connection, QString(), reserve) {}

void Work::begin(Reserve reserve) {
    nested_ = connection_.inTransaction();
    if (nested_)
        connection_.executeScript(QStringLiteral("SAVEPOINT 仕事"));
    else
        connection_.beginTrans(reserve);
    open_ = true;
    works.push_back(this);
    ++counts.open;
    ++connection_.works_;
}

Work::~Work() {
    if (!open_) return;
    if (!label_.isEmpty()) ++(std::uncaught_exceptions() > failures_ ? counts.cancelled : counts.forgotten);
    try {
        rollback();
    } catch (...) {
        // Closing the connection rolls back what this could not.
    }
}

void Work::commit() {
    Q_ASSERT(open_ && isYoungest());
    if (!connection_.inTransaction()) throwEnded();
    try {
        if (nested_)
            connection_.executeScript(QStringLiteral("RELEASE 仕事"));
        else
            connection_.commitTrans();
    } catch (const Error& error) {
        // Where nobody knows whether it stands, it is not told as taken back.
        if (error.reason() == Error::Reason::CommitUnknown) ended();
        throw;
    }
    ended();
}

void Work::rollback() {
    if (!open_) return;
    ended();
    // Behind a failed write the engine has rolled back everything on its own.
    if (!nested_ || !connection_.inTransaction()) return connection_.rollbackTrans();
    try {
        connection_.executeScript(QStringLiteral("ROLLBACK TO 仕事; RELEASE 仕事"));
    } catch (const Error&) {
        connection_.rollbackTrans();  // the work around it must not stand with a part of this one
        throw;
    }
}

void Work::ended() {
    open_ = false;
    --counts.open;
    --connection_.works_;
    std::erase(works, this);
}

bool Work::isYoungest() const {
    const auto last = std::find_if(works.rbegin(), works.rend(),
                                   [this](const Work* work) { return &work->connection_ == &connection_; });
    return last != works.rend() && *last == this;
}

Work::Tally Work::tally() {
    return counts;
}

void Work::settle(const Tally& before) {
    counts.cancelled = before.cancelled;
    counts.forgotten = before.forgotten;
}

void Work::endAbove(int depth) {
    while (counts.open > depth) {
        try {
            works.back()->rollback();
        } catch (const Error&) {
            // As in the destructor.
        }
    }
}

}  // namespace store
