// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_SESSION_H_
#define TESKPANEL_SESSION_H_

#include <span>
#include <string>
#include <vector>

#include "tools/teskpanel/frame.h"
#include "tools/teskpanel/messages.h"

namespace teskpanel {

class Session;

// The programming of one station.
struct StationButtons {
  int station = 1;
  std::vector<Button> buttons;
};

// What a session reports.  Each operation may ask the session for more.
class SessionEvents {
 public:
  virtual ~SessionEvents() = default;

  // The console serves the panel from now on.  `linkUp`: it has its switcher.
  virtual void OnServed(Session& session, bool linkUp) = 0;

  // The answer to a poll of the link.
  virtual void OnLinkAnswer(Session& session, bool linkUp) = 0;

  // Tables, asked for or not.
  virtual void OnMap(Session& session, const CrosspointMap& map) = 0;
  virtual void OnLabels(Session& session, const LabelTable& table) = 0;
  virtual void OnProgramming(Session& session, const std::vector<StationButtons>& stations) = 0;
};

// One connection to a console, from its first byte to its last; it knows no socket.
//
// The console asks who is there as soon as it is connected.  It does not confirm the reply, but it
// answers the keep-alive polls of the panels that it serves, and of no others.  So a poll is sent
// behind the reply: an answer means that the panel is served.
class Session {
 public:
  // `events` must outlive the session.  REQUIRES: 0 <= type <= 127
  Session(int type, SessionEvents& events) : type_(type), events_(events) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Takes what has arrived.  False when a console would not send that: Problem() says what is
  // wrong, and the connection cannot be used any more.
  bool Receive(std::span<const std::uint8_t> bytes);
  const std::string& Problem() const { return problem_; }

  // Takes the bytes that are to be sent.
  Bytes TakeOutput();

  // Whether the console has asked who is there, and whether it serves the panel.
  bool IsAsked() const { return asked_; }
  bool IsServed() const { return served_; }

  // Send a poll of the link, a request for tables (kAskMap and the like), a take.
  void PollLink() { Send({kLinkPoll}); }
  void Request(int mask) { Send(EncodeServiceRequest(mask)); }
  void Take(int command, int output, int input) { Send(EncodeTake(command, output, input)); }

 private:
  bool Handle(const Bytes& frame);
  void HandleLinkAnswer(bool linkUp);
  bool HandleMap(const Bytes& frame);
  bool HandleLabels(const Bytes& frame);
  bool HandleProgramming(const Bytes& frame);
  bool Refuse(const char* problem);
  void Send(const Bytes& bytes) { output_.insert(output_.end(), bytes.begin(), bytes.end()); }

  const int type_;
  SessionEvents& events_;
  FrameCutter cutter_;
  Bytes output_;
  bool asked_ = false;
  bool served_ = false;
  std::vector<int> stations_;  // those of the next programming
  std::string problem_;
};

}  // namespace teskpanel

#endif  // TESKPANEL_SESSION_H_
