/* What any program costs: it has its answer. */
#include "process.h"

int main(int argc, char** argv)
{
    (void)argv;
    return answer(argc, "1.234,56 \x80");
}
