#pragma once

/// What the callbacks of the cloud found and the dialogs show: one state for the process. Any thread.
namespace CloudState {

constexpr int LoggedInElsewhere = 3;  ///< error: another login of the account took the session's place
constexpr int TimedOut = 4;           ///< warning: a request was not answered in time

/// 0 when there is none.
int GetError();
int GetWarning();
void SetError(int error);
void SetWarning(int warning);
/// The state, which is cleared.
int TakeError();
int TakeWarning();

}  // namespace CloudState
