// SPDX-License-Identifier: MIT

#ifndef VIEWS_UPDATING_FLAG_H_
#define VIEWS_UPDATING_FLAG_H_

namespace views {

// Set while a view fills its own controls: the handlers of their signals then do nothing.
class UpdatingFlag {
 public:
  bool IsSet() const { return isSet_; }

  // Sets the flag for the scope, and then makes it what it was.
  class Scope {
   public:
    explicit Scope(UpdatingFlag& flag) : flag_(flag), before_(flag.isSet_) { flag_.isSet_ = true; }
    ~Scope() { flag_.isSet_ = before_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    UpdatingFlag& flag_;
    const bool before_;
  };

 private:
  bool isSet_ = false;
};

}  // namespace views

#endif  // VIEWS_UPDATING_FLAG_H_
