// What the sanitizers are told in every fuzz target. Inputs are short and so is what they leave behind: a small
// quarantine stays in the processor's caches, and the upper frames of an allocation tell enough. What is too large for
// the machine is refused as the system would refuse it, here from 64 MiB on.
extern "C" const char* __asan_default_options();

extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=8:thread_local_quarantine_size_kb=64:malloc_context_size=2:"
           "allocator_may_return_null=1:max_allocation_size_mb=64";
}
