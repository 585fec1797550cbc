// A library that does nothing, to be found or not to be found.
extern "C" __declspec(dllexport) int orvanel_test_library() {
    return 1;
}
