// The shared library the agent loads is the whole plug-in core; its entry points live in
// NorvaneExports.cpp and reach the library through the whole-archive link.
