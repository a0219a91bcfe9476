#include "forms/guard.h"

#include <new>
#include <optional>

#include "forms/box.h"
#include "store/error.h"

namespace forms {
namespace {

/// What the user reads of a failure.
struct Failure {
    QString text, cause;
    bool cancelled = false;  ///< it took back a change
};

/// Nothing when the procedure went through.
std::optional<Failure> failureOf(const std::function<void()>& procedure) {
    const auto plain = [](const QString& text) { return Failure{text, text}; };
    try {
        procedure();
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

/// With the works as they were before the procedure, whatever it did with its own.
std::optional<Failure> settledFailureOf(const std::function<void()>& procedure) {
    const store::Work::Tally before = store::Work::tally();
    std::optional<Failure> failure = failureOf(procedure);
    const store::Work::Tally after = store::Work::tally();
    if (failure) failure->cancelled = after.cancelled > before.cancelled;
    if (after.open > before.open || after.forgotten > before.forgotten) {
        const QString text = QStringLiteral("処理が最後まで行われなかったため、登録できませんでした。");
        if (!failure) failure = Failure{text, text};
        failure->cancelled = true;
        store::Work::endAbove(before.open);
    }
    store::Work::settle(before);
    return failure;
}

void tellFailure(widgets::Form* form, const Failure& failure) {
    if (form && (failure.cancelled || failure.cause != failure.text)) form->showCause(failure.cause);
    if (failure.cancelled)
        tell(form, QStringLiteral("処理中にエラーが発生しました。処理を取り消します。"),
             QStringLiteral("取消"), BoxIcon::Information);
    else
        tell(form, failure.text, QString());
}

bool run(widgets::Form* form, const std::function<void()>& procedure,
         const std::function<void()>& bringBack) {
    const auto failure = settledFailureOf(procedure);
    if (failure) {
        const auto second = bringBack ? settledFailureOf(bringBack) : std::nullopt;
        tellFailure(form, *failure);
        if (second) tell(form, second->text, QString());
    }
    if (form) form->setDefaultPointer();
    return !failure;
}

}  // namespace

bool guarded(widgets::Form* form, const std::function<void()>& procedure,
             const std::function<void()>& bringBack) {
    if (form) form->showCause({});
    return run(form, procedure, bringBack);
}

bool restored(widgets::Form* form, const std::function<void()>& procedure) {
    return run(form, procedure, {});
}

}  // namespace forms
