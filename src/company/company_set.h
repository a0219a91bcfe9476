#pragma once
#include <QString>

#include "company/instance_lock.h"

/// A company's folder changes as a whole: at every moment, and after a crash at any moment, it is the old
/// set of files or the new one, and the next start tells the two apart without asking.
///
/// The names in the Data folder are the state; there is no marker. `.new.X` is being built and goes when it
/// is found. `.ready.X` is decided: it becomes X, and what was X becomes `.old.X` and goes. `.old.X` alone: a
/// removal was decided. Everything here runs under the company's lock.
namespace company {

/// A new set of files for a company, beside the standing one.
class NewSet {
  public:
    /// Settles what an earlier change left and makes an empty folder to build in. Throws store::Error where
    /// the Data folder can't be written or the company is a link to another place.
    explicit NewSet(const CompanyLock& lock);
    ~NewSet();  ///< what was not put in its place goes
    NewSet(const NewSet&) = delete;
    NewSet& operator=(const NewSet&) = delete;
    const QString& folder() const { return folder_; }
    /// Makes the new set durable and puts it in the place of the company, which may not stand yet. When it
    /// throws the old set stands as it was.
    void putInPlace();

  private:
    const CompanyLock& lock_;
    QString folder_;
};

/// Removes a company with its folder. What a link in it points to stays.
void removeSet(const CompanyLock& lock);

/// Carries a change that was cut off to its end, or back where it was not decided.
void recoverSet(const CompanyLock& lock);
/// The same for every company of the folder that a change left traces of; those that another process works
/// on are left to it. What can't be mended now is tried at the next opening.
void recoverSets(const QString& dataDir);

}  // namespace company
