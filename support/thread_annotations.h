#pragma once

// Clang's thread-safety attributes; empty under other compilers.
#if defined(__clang__)
#define QUORVANE_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define QUORVANE_THREAD_ATTRIBUTE(x)
#endif

#define QUORVANE_CAPABILITY(x) QUORVANE_THREAD_ATTRIBUTE(capability(x))
#define QUORVANE_SCOPED_CAPABILITY QUORVANE_THREAD_ATTRIBUTE(scoped_lockable)
#define QUORVANE_GUARDED_BY(x) QUORVANE_THREAD_ATTRIBUTE(guarded_by(x))
#define QUORVANE_REQUIRES(...) QUORVANE_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define QUORVANE_ACQUIRE(...) QUORVANE_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define QUORVANE_RELEASE(...) QUORVANE_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define QUORVANE_EXCLUDES(...) QUORVANE_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
