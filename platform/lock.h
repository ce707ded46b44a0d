// A lock with a name, held by one thread of one process of this user at a time. The system frees
// it when its holder dies. The thread that holds it may take it again and then releases it as
// often.
#pragma once

namespace zy::platform {

struct NamedLock;

// Makes the lock of that name known to this process; never NULL. Where the machine has no place for
// lock files it still keeps the threads of this process apart.
NamedLock *openNamedLock(const char *name);
void takeLock(NamedLock *lock);  // waits without limit
void releaseLock(NamedLock *lock);
void closeNamedLock(NamedLock *lock);

}  // namespace zy::platform
