// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_EXIT_CODE_H_
#define TESKPANEL_EXIT_CODE_H_

namespace teskpanel {

// How the program ends.  Scripts rely on the numbers.
enum class ExitCode {
  Done = 0,
  NoConnection = 1,  // not made, or lost, or to something that is no console
  Usage = 2,         // a wrong command line, or a number that the system does not have
  NotServed = 3,     // the console does not serve a panel of this type
  LinkDown = 4,      // the console has no switcher
  NoAnswer = 5,      // the console did not answer in time
  NotConfirmed = 6,  // the switcher did not report the crosspoint as asked in time
};

}  // namespace teskpanel

#endif  // TESKPANEL_EXIT_CODE_H_
