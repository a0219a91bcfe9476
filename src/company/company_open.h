#pragma once
#include <QString>
#include <QStringList>
#include <memory>

#include "company/instance_lock.h"
#include "company/places.h"
#include "store/connection.h"

namespace company {

/// The companies are the subfolders of `dataDir`, in the order in which the file system gives them; files do
/// not count. A change of a company that was cut off is carried to its end first, or taken back. Throws
/// store::Error when the folder is not there.
QStringList companyFolders(const QString& dataDir);

/// The company opened last, as the settings remember it; empty when it remembers none.
/// That a folder cannot be written is no failure: nothing is remembered then.
QString lastCompany(const Places& places);
void rememberCompany(const Places& places, const QString& company);

/// What opening a company came to.
struct OpenedCompany {
    enum class Outcome {
        Opened,
        InUse,             ///< another process has the company open; nothing was touched
        LinkFailed,        ///< a linked table is not there: link_error_text tells which; the process must end
        CompanionMissing,  ///< a wage-design company without the companion program: open, but not to be
                           ///< worked on
    };
    Outcome outcome = Outcome::Opened;
    std::unique_ptr<CompanyLock> lock;           ///< must outlive cn_main
    std::unique_ptr<store::Connection> cn_main;  ///< set with Opened and CompanionMissing
    bool companion_present = false;
    bool chingin_db_exists = false;
    QString syouyo_db_name;
    QString link_saki_path;
    QString link_error_text;
};

/// Opens the company in <data>/<company>: looks for the companion program, rewrites the links to the
/// wage file (if there is one) and to the basic file, opens the main connection (an older layout is
/// copied before it is brought up), creates the tables that older companies lack. Works with full paths; the
/// current directory is left alone. `held` is the lock that the caller still has from an earlier try, or
/// null: it is taken over when it is this company's. Throws store::Error for a file that cannot be opened;
/// links rewritten before stay rewritten.
OpenedCompany openCompany(const Places& places, const QString& company, std::unique_ptr<CompanyLock>& held);

}  // namespace company
