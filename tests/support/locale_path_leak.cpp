// The C library of some hosts leaks its copy of LOCPATH at each newlocale(); the leak sanitizer
// reads this name.
extern "C" const char* __lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier)

const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:argz_add_sep\n";
}
