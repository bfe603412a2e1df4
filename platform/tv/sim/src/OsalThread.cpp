// The middleware's thread creation: a plain pthread_create that records where the thread was
// created, for the middleware's own post-mortem tools.
#include "csp/OsalThread.h"

#include <mutex>
#include <string>

namespace {

struct CreationSite {
    std::mutex mutex;
    std::string sourceFile;
    int line = 0;
};

CreationSite& lastCreationSite() {
    static CreationSite* const site = new CreationSite();
    return *site;
}

}  // namespace

extern "C" int _cspOsalPOSIX_pthread_create_line(pthread_t* thread,
                                                 const pthread_attr_t* attributes,
                                                 void* (*start)(void*), void* argument,
                                                 const char* sourceFile, int line) {
    {
        CreationSite& site = lastCreationSite();
        std::lock_guard<std::mutex> lock(site.mutex);
        site.sourceFile = sourceFile == nullptr ? "" : sourceFile;
        site.line = line;
    }
    return pthread_create(thread, attributes, start, argument);
}
