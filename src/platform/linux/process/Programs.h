#pragma once

#include <QStringList>

namespace tavro {

/// In a child process, before it becomes another program: every signal has its default and none is held back,
/// and of our files it keeps the three standard ones.
void becomeOrdinaryProgram();

/// Starts a program that outlives us and has nothing of ours. False when it cannot be started.
bool startDetached(const QString& program, const QStringList& arguments);

} // namespace tavro
