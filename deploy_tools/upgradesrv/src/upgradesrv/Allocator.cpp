/// jemalloc reads this before main(). The process is over soon: memory that it gives back in between is only asked for,
/// and cleared, again.
extern "C" {
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): jemalloc declares it so.
__attribute__((visibility("default"))) const char* malloc_conf = "dirty_decay_ms:-1,muzzy_decay_ms:-1";
}
