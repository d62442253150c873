/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostmemory.h"

#include <stdlib.h>
#include <sys/mman.h>
#include <unistd.h>

/* The size of the pages that hold so many bytes. */
static size_t pages(size_t uSize)
{
    const size_t uPage = (size_t)sysconf(_SC_PAGESIZE);
    return (uSize + uPage - 1) / uPage * uPage;
}

static char* first_page(void* pMemory, size_t uSize)
{
    return (char*)pMemory + uSize - pages(uSize);
}

static size_t guard(void)
{
    return pages(1);
}

void* memory_new(size_t uSize)
{
    char* pcPages =
        mmap(NULL, pages(uSize) + guard(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pcPages == MAP_FAILED || mprotect(pcPages + pages(uSize), guard(), PROT_NONE) != 0)
        abort();
    return pcPages + pages(uSize) - uSize;
}

void memory_make_read_only(void* pMemory, size_t uSize)
{
    if (mprotect(first_page(pMemory, uSize), pages(uSize), PROT_READ) != 0)
        abort();
}

void memory_give_back(void* pMemory, size_t uSize)
{
    if (pMemory != NULL && munmap(first_page(pMemory, uSize), pages(uSize) + guard()) != 0)
        abort();
}
