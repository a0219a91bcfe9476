#pragma once
#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;

namespace widgets {

/// The buttons of a record form in two groups, under their names: the moves cmdFirst, cmdPrevious, cmdNext,
/// cmdLast around lblStatus, and the commands cmdAdd, cmdEdit, cmdUpdate, cmdCancel, cmdDelete, cmdClose.
struct RecordBar {
    explicit RecordBar(QWidget* form);

    QWidget* moves;     ///< cmdFirst … cmdLast with lblStatus, to be put into a layout
    QWidget* commands;  ///< "picButtons": the six commands; whatever stands apart is the screen's
    QPushButton *first, *previous, *next, *last;
    QPushButton *add, *edit, *update, *cancel, *remove, *close;
    QLabel* status;

    /// Browse shows add, edit, remove and close and enables the moves; otherwise update and cancel show.
    void setBrowse(bool browse);
};

/// An item that the company does not enter: grey, whatever scheme is installed.
void setNotEntered(QWidget* control, bool notEntered);

}  // namespace widgets
