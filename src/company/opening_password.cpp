#include "company/opening_password.h"

#include <sodium.h>

#include <QSettings>
#include <algorithm>
#include <array>

#include "company/key.h"
#include "store/work.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

constexpr int kFreeTries = 3;
constexpr int kFirstWait = 5, kLongestWait = 300;  // seconds

QString hashOf(const QString& password) {
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    QByteArray bytes = passwordBytes(password);
    const int failed =
        crypto_pwhash_str(hash.data(), bytes.constData(), static_cast<unsigned long long>(bytes.size()),
                          kPasswordPasses, kPasswordMemory);
    sodium_memzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (failed) throw store::Error(store::Error::Reason::Engine, u"メモリが不足しています。"_s);
    return QString::fromLatin1(hash.data());
}

bool matches(const QString& hash, const QString& password) {
    const QByteArray kept = hash.toLatin1();
    if (kept.size() >= qsizetype(crypto_pwhash_STRBYTES)) return false;
    std::array<char, crypto_pwhash_STRBYTES> whole{};
    std::copy(kept.begin(), kept.end(), whole.begin());
    QByteArray bytes = passwordBytes(password);
    const bool right = crypto_pwhash_str_verify(whole.data(), bytes.constData(),
                                                static_cast<unsigned long long>(bytes.size())) == 0;
    sodium_memzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
    return right;
}

/// The wrong tries in a row.
struct Tries {
    qint64 failures = 0;
    QDateTime last;
};

int waitAfter(const Tries& tries, const QDateTime& now) {
    if (!tries.last.isValid() || tries.failures < kFreeTries) return 0;
    const qint64 whole =
        std::min<qint64>(kFirstWait << std::min<qint64>(tries.failures - kFreeTries, 10), kLongestWait);
    // A clock that was set back does not make the wait any longer than it is.
    return int(std::max<qint64>(0, whole - std::max<qint64>(0, tries.last.secsTo(now))));
}

}  // namespace

QString newPasswordFault(const QString& password, const QString& again) {
    if (password.size() < kShortestPassword)
        return u"パスワードは%1文字以上で入力してください。"_s.arg(kShortestPassword);
    if (password != again) return u"二つの新しいパスワードが一致しません。"_s;
    return {};
}

bool hasOpeningPassword(store::Connection& cnMain) {
    return cnMain.hasTable(u"S開始パスワード"_s) &&
           !cnMain.query(u"select 1 from S開始パスワード limit 1"_s).isEmpty();
}

void setOpeningPassword(store::Connection& cnMain, const QString& password) {
    requireSodium();
    const QString hash = hashOf(password);
    removeOpeningPassword(cnMain);
    cnMain.execute(u"insert into S開始パスワード(ハッシュ,失敗回数) values(?,0)"_s, {hash});
}

void removeOpeningPassword(store::Connection& cnMain) {
    cnMain.execute(u"delete from S開始パスワード"_s);
}

PasswordAnswer tryOpeningPassword(store::Connection& cnMain, const QString& password, const QDateTime& now) {
    requireSodium();
    const store::Recordset row = cnMain.query(u"select ハッシュ,失敗回数,失敗日時 from S開始パスワード"_s);
    if (row.isEmpty()) return {.right = true};
    Tries tries;
    if (!row.value(1).isNull()) tries.failures = row.value(1).toInteger();
    if (!row.value(2).isNull()) tries.last = QDateTime::fromString(row.value(2).toText(), Qt::ISODate);
    if (const int wait = waitAfter(tries, now); wait > 0) return {.wait = wait};
    const bool right = !row.value(0).isNull() && matches(row.value(0).toText(), password);
    store::Work work(cnMain);
    if (right)
        cnMain.execute(u"update S開始パスワード set 失敗回数=0, 失敗日時=null"_s);
    else
        cnMain.execute(u"update S開始パスワード set 失敗回数=?, 失敗日時=?"_s,
                       {tries.failures + 1, now.toString(Qt::ISODate)});
    work.commit();
    return {.right = right};
}

PasswordAnswer tryKey(const Places& places, const QString& folder, const QString& secret,
                      const QDateTime& now) {
    QSettings settings(places.settings(), QSettings::IniFormat);
    const QString failures = settingsKey(u"KeyFailures"_s, folder),
                  last = settingsKey(u"KeyFailed"_s, folder);
    const Tries tries{settings.value(failures).toLongLong(),
                      QDateTime::fromString(settings.value(last).toString(), Qt::ISODate)};
    if (const int wait = waitAfter(tries, now); wait > 0) return {.wait = wait};
    const bool right = learnKey(folder, secret);
    if (right) {
        settings.remove(failures);
        settings.remove(last);
    } else {
        settings.setValue(failures, tries.failures + 1);
        settings.setValue(last, now.toString(Qt::ISODate));
    }
    return {.right = right};
}

}  // namespace company
