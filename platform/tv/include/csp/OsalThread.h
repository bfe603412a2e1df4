// Middleware OS abstraction: thread creation that records the creating source location.
#pragma once

#include <pthread.h>

#ifdef __cplusplus
extern "C" {
#endif

int _cspOsalPOSIX_pthread_create_line(pthread_t* thread, const pthread_attr_t* attributes,
                                      void* (*start)(void*), void* argument, const char* sourceFile,
                                      int line);

#ifdef __cplusplus
}
#endif
