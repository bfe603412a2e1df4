// Middleware debug facility; initialised once per process before the middleware is used.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

void cspDebugInit(void);

#ifdef __cplusplus
}
#endif
