// The agent's C interface for remote support sessions.
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Filled by ZelGetStatus; 22 32-bit words on the 32-bit target. ZelFreeStatus releases what the
// agent allocated inside it (the session code), not the record itself.
typedef struct ZelStatus {
    int32_t initialized;     // word 0: 1 when the agent is initialised
    int32_t reserved1;       // word 1
    int32_t state;           // word 2: session state
    int32_t reserved3[6];    // words 3 to 8
    char* sessionCode;       // word 9: NUL-terminated session code, or null
    int32_t reserved10[12];  // words 10 to 21
} ZelStatus;

#if defined(__cplusplus) && UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(ZelStatus) == 88, "the agent's status record is 88 bytes");
static_assert(offsetof(ZelStatus, initialized) == 0, "initialized is word 0");
static_assert(offsetof(ZelStatus, state) == 8, "state is word 2");
static_assert(offsetof(ZelStatus, sessionCode) == 36, "sessionCode is word 9");
#endif

// Starts a session; 0 when the request was accepted, 1 on a network error, other values on a
// server error.
int32_t ZelSessionInit(int32_t mode);
void ZelSessionTerm(void);
int32_t ZelGetStatus(int32_t flags, ZelStatus* status);
void ZelFreeStatus(ZelStatus* status);
void ZelCheckForSoftwareUpdate(void);
void ZelLogMessage(int32_t level, const char* message);

#ifdef __cplusplus
}
#endif
