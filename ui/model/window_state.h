#pragma once

#include <QString>

// What the window remembers from one run to the next, in the file "Quorvane/window.ini" in the
// user's state directory. Without such a directory, or when the file cannot be written, it is
// forgotten. Main thread only; each call reads or writes the file.
namespace quorvane::WindowState {

bool flag(const QString& key, bool otherwise);
void setFlag(const QString& key, bool value);

// An empty text for a key that was not set.
QString word(const QString& key);
void setWord(const QString& key, const QString& value);

}  // namespace quorvane::WindowState
