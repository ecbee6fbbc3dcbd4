// The demo host.
#include "demo/demoProgram.h"

int main(int argc, char** argv) { return vantrelix::demo::runDemo(argc, argv); }
