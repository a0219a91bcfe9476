#pragma once
#include <optional>

#include "forms/screens.h"
#include "prep/suspicions.h"
#include "widgets/form.h"

namespace widgets {
class Table;
}

namespace prep {

/// 入力の確認: what is suspicious in the inputs of a run, with the people and the place where each is mended.
/// Going back is what Enter and Escape do.
class frmSKakunin : public widgets::Form {
    Q_OBJECT
  public:
    enum class Answer { Back, GoOn, Open };
    /// `act` is the way on: "このまま計算する(&K)".
    frmSKakunin(std::vector<Suspicion> found, const QString& act, QWidget* parent);
    Answer answer() const { return answer_; }
    const Suspicion& chosen() const;  ///< whose place is to be opened

    /// Nothing is asked where nothing is suspicious: true. Otherwise true when the user goes on all the same;
    /// when the place was wanted, it was opened and left again.
    static bool mayGoOn(widgets::Form* opener, forms::House& house, std::vector<Suspicion> found,
                        const QString& act);

  private:
    std::vector<Suspicion> found_;
    Answer answer_ = Answer::Back;
    widgets::Table* table_ = nullptr;
};

}  // namespace prep
