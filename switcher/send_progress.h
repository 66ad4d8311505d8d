// SPDX-License-Identifier: MIT

#ifndef SWITCHER_SEND_PROGRESS_H_
#define SWITCHER_SEND_PROGRESS_H_

namespace switcher {

// Who is told how far the sending of tables has come.
class SendProgress {
 public:
  virtual ~SendProgress() = default;

  // One more data value has been handed to the port.  A pair is one value; of the label texts
  // every byte is one.  Code, checksum and end byte are none.
  virtual void UpdateStatus() = 0;
};

}  // namespace switcher

#endif  // SWITCHER_SEND_PROGRESS_H_
