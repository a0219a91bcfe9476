#include "durability/set_changes.h"

#include "company/backup.h"
#include "company/compaction.h"
#include "company/company_set.h"
#include "company/create.h"
#include "company/key_change.h"
#include "company/migration.h"

namespace durability {

void runSetChange(SetChange change, const QString& programDir) {
    const company::Places places = company::placesOf(programDir);
    const QString folder = places.data + u'/' + kSetCompany, backup = places.backups() + u'/' + kSetCompany;
    if (change == SetChange::Create)
        return company::createCompany(places.data, kSetCompany, {true, true, true});
    if (change == SetChange::BackUp) {
        company::makeBackup(folder, kSetCompany, backup);
        return;
    }
    if (change == SetChange::Move) {
        company::migrate(*company::planMigration(programDir + QStringLiteral("/former")), places.data,
                         kSetCompany);
        return;
    }
    const auto lock = company::CompanyLock::acquire(places.data, kSetCompany);
    if (change == SetChange::Lock) {
        const company::OwnKey own(kSetPassword);
        company::changeKey(*lock, &own);
    }
    if (change == SetChange::Unlock && company::learnKey(folder, kSetPassword))
        company::changeKey(*lock, nullptr);
    if (change == SetChange::Remove) company::removeSet(*lock);
    if (change == SetChange::Restore) company::restoreBackup(company::lookInto(backup), *lock);
    if (change == SetChange::Compact)
        for (const QString& name : company::databaseNames(kSetCompany))
            company::compact_database(*lock, folder + u'/' + name);
}

}  // namespace durability
