#pragma once

#include <QString>

// An advisory lock on a file in the state directory (flock). The kernel drops
// it when the holding process ends in any way, kill -9 included, so a crashed
// backup never leaves the state locked.
class BackupLock
{
public:
    explicit BackupLock(QString path);
    ~BackupLock();
    BackupLock(const BackupLock &) = delete;
    BackupLock &operator=(const BackupLock &) = delete;

    // Exclusive lock; waits for the holder to finish.
    bool lock();
    // Exclusive lock if it can be had within `patienceMs` (a short shared probe
    // from isHeldElsewhere may hold it for a moment).
    bool tryLock(int patienceMs = 50);
    void unlock();
    bool isLocked() const { return m_fd >= 0; }

    // True while another process holds the lock exclusively.
    static bool isHeldElsewhere(const QString &path);

private:
    bool open();

    QString m_path;
    int m_fd = -1;
};
