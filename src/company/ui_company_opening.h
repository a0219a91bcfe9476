#pragma once
#include <QString>

#include "forms/screens.h"
#include "widgets/form.h"

/// How a screen opens and closes the company of the house.
namespace company {

/// Opens the company of `house`'s Data folder and hands it to the global record, from within the screen's
/// guard. A company with a password of its own asks for it, unless it was made with it a moment ago. What is
/// no success is told; a failed link ends the process. True: it is open, and the screen is to close and to
/// show the menu.
bool openForHouse(forms::House& house, widgets::Form* screen, const QString& company,
                  bool passwordKnown = false);
/// Asks for the password of the files in `folder`, those of `company`, where they are locked and their key is
/// not known yet. False: it is not known then either.
bool unlockForHouse(forms::House& house, widgets::Form* screen, const QString& folder,
                    const QString& company);
/// MENUの表示 goes, and frmMenu000 shows modally over the main window until it is closed.
void showCompanyMenu(forms::House& house, const widgets::Form* screen);
/// Closes the open company: the panel shows the prompt again and MENUの表示 goes.
void closeForHouse(forms::House& house, const widgets::Form* screen);
/// A company that could not be worked with keeps its files and its lock until the next one is opened, though
/// it does not count as open: what changes a company's files as a whole lets go of it first.
void letGoOfUnopened(forms::House& house);
/// The name of the open company's folder; empty when none counts as open.
QString openCompanyName(const forms::House& house);

}  // namespace company
