#pragma once

#include <QLockFile>
#include <QString>

/// The session of a data folder is one program's at a time: a second one would write its own list
/// over it. The lock ends with its owner, and with the program, however that ends.
class XSessionLock {
public:
    explicit XSessionLock(const QString& folder) : m_file(folder + "/session.lock")
    {
        m_file.setStaleLockTime(0); // a program that runs for days has it still
    }

    bool take() { return m_file.tryLock(0); }
    /// After take() failed: another program has it, so it is not the folder that is at fault.
    bool isTaken() const { return m_file.error() == QLockFile::LockFailedError; }

private:
    QLockFile m_file;
};
