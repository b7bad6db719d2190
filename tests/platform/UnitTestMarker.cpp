// A module whose presence in the process is looked for; it needs something in it to be one.
extern "C" __attribute__((visibility("default"))) int unitTestMarker() {
    return 1;
}
