// The locks of GLib for the thread sanitizer.
//
// GLib is not instrumented and builds its locks on the kernel's futexes, so the sanitizer does not
// see that whoever takes a lock comes after whoever has let it go, and would report everything that
// our callbacks receive from GStreamer. These functions stand in front of GLib's in the programs
// that they are linked into, call them, and tell the sanitizer about that order and nothing else.

#include <dlfcn.h>
#include <glib.h>
#include <sanitizer/tsan_interface.h>

#define EXPORTED extern "C" [[gnu::visibility("default")]]

namespace {

/// The function of that name behind ours. The loader resolves it, because libraries take locks
/// before any constructor of ours has run.
template <class Function>
Function* behind(Function*& kept, const char* name) {
    Function* function = __atomic_load_n(&kept, __ATOMIC_RELAXED);
    if (function == nullptr) {
        function = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
        __atomic_store_n(&kept, function, __ATOMIC_RELAXED);
    }
    return function;
}

} // namespace

#define BEHIND(name)                                                                               \
    ([] {                                                                                          \
        static decltype(name)* kept = nullptr;                                                     \
        return behind(kept, #name);                                                                \
    }())

#define TAKES(name, Lock)                                                                          \
    EXPORTED void name(Lock* lock) {                                                               \
        BEHIND(name)(lock);                                                                        \
        __tsan_acquire(lock);                                                                      \
    }
#define TRIES(name, Lock)                                                                          \
    EXPORTED gboolean name(Lock* lock) {                                                           \
        const gboolean isTaken = BEHIND(name)(lock);                                               \
        if (isTaken)                                                                               \
            __tsan_acquire(lock);                                                                  \
        return isTaken;                                                                            \
    }
#define LETS_GO(name, Lock)                                                                        \
    EXPORTED void name(Lock* lock) {                                                               \
        __tsan_release(lock);                                                                      \
        BEHIND(name)(lock);                                                                        \
    }

TAKES(g_mutex_lock, GMutex)
TRIES(g_mutex_trylock, GMutex)
LETS_GO(g_mutex_unlock, GMutex)
TAKES(g_rec_mutex_lock, GRecMutex)
TRIES(g_rec_mutex_trylock, GRecMutex)
LETS_GO(g_rec_mutex_unlock, GRecMutex)
TAKES(g_rw_lock_writer_lock, GRWLock)
TRIES(g_rw_lock_writer_trylock, GRWLock)
LETS_GO(g_rw_lock_writer_unlock, GRWLock)
TAKES(g_rw_lock_reader_lock, GRWLock)
TRIES(g_rw_lock_reader_trylock, GRWLock)
LETS_GO(g_rw_lock_reader_unlock, GRWLock)

// A wait lets the lock go and takes it again inside GLib, where nothing stands in front.
EXPORTED void g_cond_wait(GCond* condition, GMutex* mutex) {
    __tsan_release(mutex);
    BEHIND(g_cond_wait)(condition, mutex);
    __tsan_acquire(mutex);
}

EXPORTED gboolean g_cond_wait_until(GCond* condition, GMutex* mutex, gint64 end) {
    __tsan_release(mutex);
    const gboolean isWoken = BEHIND(g_cond_wait_until)(condition, mutex, end);
    __tsan_acquire(mutex);
    return isWoken;
}
