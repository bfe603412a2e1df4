/* A plug-in in name only, built for a machine other than the one the tests run on: it has the
 * agent's eight entry points, so only its machine keeps agentsim from loading it. Built without
 * the C library, so that no library of that machine is needed. */
void initialize(void) {}
void createCommandsExt(void) {}
void createDeviceValuesExt(void) {}
void GetZelPassword(void) {}
void fillVideoBufferExt(void) {}
void getVideoWidthExt(void) {}
void getVideoHeightExt(void) {}
void getGstreamerPathExt(void) {}
