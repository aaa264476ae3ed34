/**
 * @file nls1.h
 * The facade of the library: per-thread locales and numeric ids on top of tessera.h. Clean C11 and
 * C++. It has the facade's constants, which tsconst.h holds; its functions come with the facade.
 */
#ifndef NLS1_H
#define NLS1_H

#include "tessera.h"

#endif
