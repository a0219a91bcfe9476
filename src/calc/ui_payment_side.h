#pragma once
#include <QSize>
#include <optional>

#include "calc/payment_preview.h"
#include "calc/shikyuu_store.h"

namespace widgets {
class Form;
}

namespace calc {

class PaymentPanel;

/// 支給係数修正 on the calculation screen: tells what the set-up of a run leads to, or opens the panel at the
/// screen's right. The window grows by the panel and shrinks by it again.
class PaymentSide {
  public:
    /// The sizes of the window at least, as long as its layout needs no more.
    struct Least {
        int closedWidth, openWidth, height;
    };
    /// Makes the panel, closed. The form's layout takes panel() in.
    PaymentSide(widgets::Form* form, Least least);

    PaymentPanel* panel() const { return panel_; }
    bool isOpen() const;
    /// The panel as it stands; Mode::Closed while it is closed, though its texts are still what a run stores.
    PaymentSimulation simulation() const;

    /// What the run's set-up leads to is told, or the panel opens; true when the run may go on. May throw
    /// store::Error.
    bool correct(store::Connection& connection, const domain::RunKey& run);
    void close();
    /// The window is never smaller than told, nor than what the controls in sight need.
    void fitWindow();

  private:
    bool act(const PaymentOutcome& outcome);
    bool refuse(const QString& text);
    void open(store::Connection& connection, const domain::RunKey& run);
    void showEffect();

    widgets::Form* form_;
    Least least_;
    PaymentPanel* panel_;
    int room_ = 0;  ///< by how much the window grew for the panel
    QString hyougoType_;
    std::optional<PaymentPreview> preview_;  ///< the run as it was when the panel opened
};

}  // namespace calc
