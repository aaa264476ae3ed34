/* What a program costs that has the library beside it and does not call it. */
#include "process.h"

#include "nls1.h"

int main(int argc, char** argv)
{
    if (argc > 2)
        return NLS1_GetSortName(1, argv[2], 1);
    return answer(argc, "1.234,56 \x80");
}
