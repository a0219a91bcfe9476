#include "forms/guard.h"

#include <new>

#include "forms/box.h"

namespace forms {
namespace {

const QString kSavepoint = QStringLiteral("SAVEPOINT 画面");
const QString kRelease = QStringLiteral("RELEASE 画面");

/// What the user reads of a failure.
struct Failure {
    QString text, cause;
};
/// Nothing when the work went through.
std::optional<Failure> failureOf(const std::function<void()>& work) {
    const auto plain = [](const QString& text) { return Failure{text, text}; };
    try {
        work();
    } catch (const store::Error& error) {
        return Failure{error.text(), error.cause()};
    } catch (const std::bad_alloc&) {
        return plain(QStringLiteral("メモリが不足しています。"));
    } catch (const std::exception& error) {
        return plain(QString::fromUtf8(error.what()));
    } catch (...) {
        return plain(QStringLiteral("予期しないエラーが発生しました。"));
    }
    return {};
}

void tellPlain(widgets::Form* form, const Failure& failure) {
    if (form && failure.cause != failure.text) form->showCause(failure.cause);
    tell(form, failure.text, QString());
}

void tellCancelled(widgets::Form* form, FormTransaction& transaction) {
    tell(form, QStringLiteral("処理中にエラーが発生しました。処理を取り消します。"), QStringLiteral("取消"),
         BoxIcon::Information);
    if (const auto failure = failureOf([&] { transaction.rollback(); })) tellPlain(form, *failure);
}

}  // namespace

void FormTransaction::begin() {
    nested_ = cn_.inTransaction();
    if (nested_)
        cn_.execute(kSavepoint);
    else
        cn_.beginTrans(reserve_);
    open_ = true;
}

void FormTransaction::commit() {
    if (nested_)
        cn_.execute(kRelease);
    else
        commitOutermost();
    open_ = false;
}

/// Where nobody knows whether it stands, it is not told as taken back.
void FormTransaction::commitOutermost() {
    try {
        cn_.commitTrans();
    } catch (const store::Error& error) {
        open_ = error.reason() != store::Error::Reason::CommitUnknown;
        throw;
    }
}

void FormTransaction::rollback() {
    open_ = false;
    // A full disk makes the engine roll back on its own.
    if (!cn_.inTransaction()) return;
    if (nested_) {
        cn_.execute(QStringLiteral("ROLLBACK TO 画面"));
        cn_.execute(kRelease);
    } else {
        cn_.rollbackTrans();
    }
}

bool guarded(widgets::Form* form, const std::function<void()>& work) {
    if (form) form->showCause({});
    return restored(form, work);
}

bool restored(widgets::Form* form, const std::function<void()>& work) {
    const auto failure = failureOf(work);
    if (failure) tellPlain(form, *failure);
    if (form) form->setDefaultPointer();
    return !failure;
}

bool guarded(widgets::Form* form, FormTransaction& transaction, const std::function<void()>& work) {
    if (form) form->showCause({});
    const auto failure = failureOf(work);
    if (failure && transaction.open()) {
        if (form) form->showCause(failure->cause);
        tellCancelled(form, transaction);
    } else if (failure) {
        tellPlain(form, *failure);
    }
    if (form) form->setDefaultPointer();
    return !failure;
}

}  // namespace forms
