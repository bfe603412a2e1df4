# Production build: the agent's and the middleware's headers and libraries come from the vendor
# SDK instead of platform/*/include and the simulated implementations.
add_library(zelhost_headers INTERFACE)
target_include_directories(zelhost_headers INTERFACE ${NORVANE_VENDOR_SDK}/include)
add_library(tvmw_headers INTERFACE)
target_include_directories(tvmw_headers INTERFACE ${NORVANE_VENDOR_SDK}/include)
target_link_libraries(tvmw_headers INTERFACE Boost::headers)
find_library(NORVANE_AGENT_LIB NAMES zel PATHS ${NORVANE_VENDOR_SDK}/lib REQUIRED)
find_library(NORVANE_MIDDLEWARE_LIB NAMES tvapi PATHS ${NORVANE_VENDOR_SDK}/lib REQUIRED)
add_library(zelhost_platform INTERFACE)
target_link_libraries(zelhost_platform INTERFACE zelhost_headers ${NORVANE_AGENT_LIB})
add_library(tvmw_platform INTERFACE)
target_link_libraries(tvmw_platform INTERFACE tvmw_headers ${NORVANE_MIDDLEWARE_LIB})
# The real seams: fixed paths as they stand, real time.
set(NORVANE_SEAMS_SOURCES ${CMAKE_SOURCE_DIR}/src/common/SeamsProduction.cpp)
