// Logging and tracing of agent-facing code (commands, wrappers) through the agent's logger.
// Each unit defines NV_SOURCE_UNIT (its path, e.g.
// "src/DeviceAgent/SupportView/Project/NorvaneInterfaces") before including this header.
#pragma once

#include "zel/core/Logger.h"

namespace norvane {

constexpr int kSeverityRoutine = 5;
constexpr int kSeverityError = 2;
constexpr int kLogCategory = 2;
constexpr int kLogChannel = 3;
constexpr int kTraceComponent = 2;

}  // namespace norvane

// Asks the logger first so that a filtered message is never formatted.
#define NV_HOST_LOG(severity, ...)                                                                \
    do {                                                                                          \
        if (::Zel::Core::Logger::Instance().test(::norvane::kLogCategory, ::norvane::kLogChannel, \
                                                 (severity))) {                                   \
            ::Zel::Core::Logger::Instance().log(NV_SOURCE_UNIT, __LINE__, __func__,               \
                                                ::norvane::kLogCategory, ::norvane::kLogChannel,  \
                                                (severity), __VA_ARGS__);                         \
        }                                                                                         \
    } while (0)

// Like NV_HOST_LOG, under an explicit function name (for helpers that log on behalf of an
// operation).
#define NV_HOST_LOG_AS(function, severity, ...)                                                   \
    do {                                                                                          \
        if (::Zel::Core::Logger::Instance().test(::norvane::kLogCategory, ::norvane::kLogChannel, \
                                                 (severity))) {                                   \
            ::Zel::Core::Logger::Instance().log(NV_SOURCE_UNIT, __LINE__, (function),             \
                                                ::norvane::kLogCategory, ::norvane::kLogChannel,  \
                                                (severity), __VA_ARGS__);                         \
        }                                                                                         \
    } while (0)

// Traces the rest of the enclosing scope under `function`.
#define NV_TRACE(function)                                                           \
    ::Zel::Core::FunctionTrace nvFunctionTrace((function), NV_SOURCE_UNIT, __LINE__, \
                                               ::norvane::kTraceComponent)
