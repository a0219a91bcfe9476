#include "store/work.h"

#include <exception>
#include <utility>

namespace store {
namespace {

/// One thread, and works end in the opposite order of their beginning: a list through the works themselves.
Work* youngest = nullptr;
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
    outer_ = std::exchange(youngest, this);
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
    Q_ASSERT(open_ && youngest == this);
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
    // A full disk or a failed write makes the engine roll back everything on its own.
    if (!connection_.inTransaction()) return;
    if (nested_)
        connection_.executeScript(QStringLiteral("ROLLBACK TO 仕事; RELEASE 仕事"));
    else
        connection_.rollbackTrans();
}

void Work::ended() {
    open_ = false;
    --counts.open;
    --connection_.works_;
    if (youngest == this) youngest = outer_;
}

Work::Tally Work::tally() {
    return counts;
}

void Work::settle(const Tally& before) {
    counts.cancelled = before.cancelled;
    counts.forgotten = before.forgotten;
}

void Work::endAbove(int depth) {
    while (counts.open > depth && youngest) {
        try {
            youngest->rollback();
        } catch (const Error&) {
            // As in the destructor.
        }
    }
}

}  // namespace store
