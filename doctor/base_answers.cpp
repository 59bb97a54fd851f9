#include "doctor/base_answers.h"

#include <exception>
#include <memory>
#include <system_error>
#include <utility>

#include "hid/return_code.h"
#include "protocol/error.h"
#include "session/wheel_base.h"
#include "support/mutex.h"
#include "support/thread.h"

namespace quorvane {
namespace {

using Opening = BaseAnswers::Opening;

bool isCode(const std::exception& failure, HIDReturn code) {
  const auto* const error = dynamic_cast<const FanatecError*>(&failure);
  return error != nullptr && *error == FanatecError::ioFailed(describeHIDReturn(code));
}

Opening openingOf(const std::exception& failure) {
  if (isCode(failure, HIDReturnCode::notPermitted)) return Opening::notPermitted;
  if (isCode(failure, HIDReturnCode::exclusiveAccess)) return Opening::heldByAnother;
  return Opening::failed;
}

// One session on its own thread. The thread shares ownership, so it may outlive the caller.
class Interview {
 public:
  Interview(const HIDDeviceInfo& base, Clock& clock) : base_(WheelBase::create(base, clock)) {}

  static void start(const std::shared_ptr<Interview>& interview) {
    interview->thread_ = Thread("quorvane.doctor", [interview] {
      interview->run();
      interview->done_.signal();
    });
  }

  // False on timeout; then disconnects, so that no further request is sent.
  bool wait(Seconds limit) {
    const auto duration = std::chrono::duration_cast<Monotonic::duration>(limit);
    if (done_.waitUntil(Monotonic::now() + duration)) {
      thread_.join();
      return true;
    }
    base_->disconnect();
    return false;
  }

  BaseAnswers answers() {
    MutexLock held(lock_);
    return answers_;
  }

 private:
  template <typename Change>
  void note(Change change) {
    MutexLock held(lock_);
    change(answers_);
  }

  void run() {
    try {
      base_->connect(WheelBase::Use::reading);
    } catch (const std::exception& failure) {
      return note([&](BaseAnswers& answers) {
        answers.opening = openingOf(failure);
        answers.openFailure = failure.what();
      });
    }
    note([](BaseAnswers& answers) { answers.opening = Opening::opened; });
    ask();
    base_->disconnect();
    base_->connection().join();
  }

  void ask() {
    try {
      const IdentityReport identity = base_->fetchIdentity(WheelBase::readTimeout);
      note([&](BaseAnswers& answers) { answers.identity = identity; });
    } catch (const FanatecError& error) {
      note([&](BaseAnswers& answers) { answers.identityFailure = error.what(); });
    }
    try {
      const TuningSnapshot tuning = base_->fetchTuning(WheelBase::readTimeout);
      note([&](BaseAnswers& answers) { answers.tuning = tuning; });
    } catch (const FanatecError& error) {
      note([&](BaseAnswers& answers) { answers.tuningFailure = error.what(); });
    }
    note([&](BaseAnswers& answers) { answers.firmwareVersion = base_->firmwareVersion(); });
  }

  const std::shared_ptr<WheelBase> base_;
  Mutex lock_;
  BaseAnswers answers_ QUORVANE_GUARDED_BY(lock_);
  Semaphore done_;
  Thread thread_;
};

}  // namespace

BaseAnswers askBase(const HIDDeviceInfo& base, Clock& clock, Seconds limit) {
  const auto interview = std::make_shared<Interview>(base, clock);
  try {
    Interview::start(interview);
  } catch (const std::system_error& error) {  // the thread could not be started
    BaseAnswers answers;
    answers.opening = Opening::failed;
    answers.openFailure = error.what();
    return answers;
  }
  const bool ended = interview->wait(limit);
  BaseAnswers answers = interview->answers();
  answers.outOfTime = !ended;
  return answers;
}

}  // namespace quorvane
