// One loop, compiled for each generation of vector units; the loader picks at the start.
#pragma once

// Sanitizers aren't up yet when the loader asks which one.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)                                \
    && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define TESSARA_VECTOR_CLONES [[gnu::target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")]]
#else
#define TESSARA_VECTOR_CLONES
#endif
