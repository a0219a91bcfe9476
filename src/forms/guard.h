#pragma once
#include <functional>

#include "store/connection.h"
#include "widgets/form.h"

namespace forms {

/// The form's private flag: a transaction on cn_main that a failure must roll back. Where a screen below has
/// a transaction open already, this one nests in it: a rollback takes back this form's own work only.
class FormTransaction {
  public:
    using Reserve = store::Connection::Reserve;
    explicit FormTransaction(store::Connection& cn, Reserve reserve = Reserve::AllFiles)
        : cn_(cn), reserve_(reserve) {}
    void begin();   ///< BeginTrans, flag True
    void commit();  ///< CommitTrans, flag False
    bool open() const { return open_; }
    void rollback();

  private:
    void commitOutermost();
    store::Connection& cn_;
    Reserve reserve_;
    bool open_ = false;
    bool nested_ = false;
};

/// Every event procedure that touches data runs in here: the program's one failure style.
/// A failure (store::Error or another exception) is told once: with its plain description, or, with
/// `transaction` open, with "処理中にエラーが発生しました。処理を取り消します。" under the title "取消" and a
/// rollback. In the latter case, and wherever the failure names somebody, the form says the cause beside its
/// buttons until the next procedure begins. Then the form's pointer goes back to default. True when the work
/// ended without failure. Never throws.
bool guarded(widgets::Form* form, const std::function<void()>& work);
bool guarded(widgets::Form* form, FormTransaction& transaction, const std::function<void()>& work);
/// The same for what brings a screen back after a failure: the cause that stands there stays.
bool restored(widgets::Form* form, const std::function<void()>& work);

}  // namespace forms
