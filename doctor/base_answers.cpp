#include "doctor/base_answers.h"

#include <exception>
#include <system_error>
#include <utility>

#include "doctor/timed_task.h"
#include "hid/return_code.h"
#include "protocol/error.h"
#include "session/wheel_base.h"

namespace quorvane {
namespace {

using Opening = BaseAnswers::Opening;
using Publish = TimedTask<BaseAnswers>::Publish;

Opening openingOf(const std::exception& failure) {
  const auto* const error = dynamic_cast<const FanatecError*>(&failure);
  const HIDReturn code = error != nullptr ? error->openCode() : HIDReturnCode::success;
  if (code == HIDReturnCode::notPermitted) return Opening::notPermitted;
  if (code == HIDReturnCode::exclusiveAccess) return Opening::heldByAnother;
  return Opening::failed;
}

BaseAnswers notOpened(Opening opening, const std::exception& failure) {
  BaseAnswers answers;
  answers.opening = opening;
  answers.openFailure = failure.what();
  return answers;
}

// Publishes after each step: if the next one blocks, the answers so far count.
void ask(WheelBase& base, BaseAnswers answers, const Publish& publish) {
  try {
    base.connect(WheelBase::Use::reading);
  } catch (const std::exception& failure) {
    return publish(notOpened(openingOf(failure), failure));
  }
  answers.opening = Opening::opened;
  publish(answers);
  try {
    answers.identity = base.fetchIdentity(WheelBase::readTimeout);
  } catch (const FanatecError& error) {
    answers.identityFailure = error.what();
  }
  publish(answers);
  try {
    answers.tuning = base.fetchTuning(WheelBase::readTimeout);
  } catch (const FanatecError& error) {
    answers.tuningFailure = error.what();
  }
  answers.firmwareVersion = base.firmwareVersion();
  publish(answers);
  base.disconnect();
  base.connection().join();
  answers.outOfTime = false;
  publish(answers);
}

}  // namespace

BaseAnswers askBase(const HIDDeviceInfo& base, Clock& clock, Seconds limit,
                    const std::stop_token& stop) {
  const auto session = WheelBase::create(base, clock);
  const std::stop_callback onStop(stop, [&] { session->disconnect(); });
  BaseAnswers unfinished;
  unfinished.outOfTime = true;
  try {
    TimedTask<BaseAnswers> task(limit, unfinished, [session, unfinished](const Publish& publish) {
      ask(*session, unfinished, publish);
    });
    BaseAnswers answers = task.await();
    session->disconnect();  // if it is out of time, sends no further request
    return answers;
  } catch (const std::system_error& error) {  // the thread could not be started
    return notOpened(Opening::failed, error);
  }
}

}  // namespace quorvane
