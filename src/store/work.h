#pragma once
#include <QString>

#include "store/connection.h"

namespace store {

/// A unit of work: everything that is written on a connection between its construction and commit() stands,
/// or nothing of it. Rolls back unless committed. Where a transaction is open already it nests in it: its
/// rollback takes back its own writes only, and its commit stands when the outermost one's does. Lives on the
/// stack, so that works end in the opposite order of their beginning.
///
/// A work with a label is a change of the user's data under the name that the user would give it
/// ("配分計算"). What has to be known of every change hangs here. A screen's guard tells a labelled work that
/// a failure took back as "取消", and refuses one that was left without commit() or rollback(). A work
/// without a label keeps the program's own tables together (work tables, links, upgrades).
class Work {
  public:
    using Reserve = Connection::Reserve;

    Work(Connection& connection, QString label, Reserve reserve = Reserve::AllFiles);
    explicit Work(Connection& connection, Reserve reserve = Reserve::AllFiles);
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

    /// Returns when the work stands (or, nested, when the one around it has it). Throws what
    /// Connection::commitTrans tells: the work is open still and may be committed again, unless the reason is
    /// CommitUnknown.
    void commit();
    /// Takes back what was written. Throws when even that fails; the work counts as ended.
    void rollback();
    bool open() const { return open_; }
    const QString& label() const { return label_; }

    /// What a guard compares before and after an event procedure.
    struct Tally {
        int open = 0;       ///< works that have not ended
        int cancelled = 0;  ///< labelled works that a failure took back
        int forgotten =
            0;  ///< labelled works that ended without commit() or rollback(), and without a failure
    };
    static Tally tally();
    /// Told: the failures and faults up to now are settled, works that are open stay.
    static void settle(const Tally& before);
    /// Ends every work that began after `depth` others, the youngest first: what is left behind by a fault in
    /// the program must not swallow the works that follow.
    static void endAbove(int depth);

  private:
    void begin(Reserve reserve);
    void ended();
    bool isYoungest() const;  ///< of its connection
    Connection& connection_;
    QString label_;
    int failures_ = 0;  ///< exceptions under way at the beginning
    bool nested_ = false;
    bool open_ = false;
};

}  // namespace store
