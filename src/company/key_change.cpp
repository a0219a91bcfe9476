#include "company/key_change.h"

#include <QFile>

#include "company/company_files.h"
#include "company/company_set.h"

namespace company {

bool changeKey(const CompanyLock& lock, const OwnKey* own, const store::Progress& progress) {
    constexpr int kCopyParts = 70;  // of a hundred; the rest is verifying
    const auto part = [&](qint64 done, qint64 whole) {
        return !progress || progress(done * kCopyParts, whole * 100);
    };
    NewSet set(lock);
    RowCounts rows;
    {
        CompanyMoment moment(lock.folder(), lock.company());
        if (!moment.links().isEmpty())  // no copy holds them
            throw store::Error(
                store::Error::Reason::ReadOnly,
                QStringLiteral(
                    "会社のフォルダに、ほかの場所へのリンク「%1」があるため、暗号化を変えられません。")
                    .arg(moment.links().join(QStringLiteral("」「"))));
        moment.requireSound();
        rows = moment.rowCounts();
        if (!moment.copyTo(set.folder(), lock.company(), own ? own->key() : sharedKey(), part)) return false;
    }
    if (own)
        own->write(set.folder());
    else
        QFile::remove(set.folder() + u'/' + kKeyFile);
    verifyCopy(set.folder(), lock.company(), rows);
    if (progress && !progress(99, 100)) return false;
    set.putInPlace();
    return true;
}

}  // namespace company
