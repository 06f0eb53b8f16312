// Under a sanitizer an allocation that cannot be had fails as it does elsewhere, instead of ending the test.
extern "C" const char* __asan_default_options();
extern "C" const char* __tsan_default_options();

const char* __asan_default_options() { return "allocator_may_return_null=1"; }
const char* __tsan_default_options() { return "allocator_may_return_null=1"; }
