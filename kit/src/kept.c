/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "kept.h"

#include <sys/mman.h>

struct kept_block
{
    struct kept_block* pNext;
    size_t uSize; /* with this head */
    _Alignas(64) unsigned char acBytes[];
};

static struct kept_block* pRetired;
static struct kept_block* pColors;
static int iRetired;

struct kept_block* kept_new(size_t uBytes)
{
    const size_t uSize = sizeof(struct kept_block) + uBytes;
    struct kept_block* pBlock =
        mmap(NULL, uSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (pBlock == MAP_FAILED)
        return NULL;
    pBlock->uSize = uSize;
    return pBlock;
}

void* kept_bytes(struct kept_block* pBlock)
{
    return pBlock->acBytes;
}

void kept_free(struct kept_block* pBlock)
{
    if (pBlock != NULL)
        munmap(pBlock, pBlock->uSize);
}

void kept_retire(struct kept_block* pBlock)
{
    pBlock->pNext = pRetired;
    pRetired = pBlock;
    iRetired++;
}

void kept_set_colors(struct kept_block* pBlock)
{
    if (pColors != NULL && pColors != pBlock)
        kept_retire(pColors);
    pColors = pBlock;
}

struct kept_block* kept_colors(void)
{
    return pColors;
}

int kept_count(void)
{
    return iRetired;
}

void kept_free_retired(void)
{
    while (pRetired != NULL) {
        struct kept_block* pNext = pRetired->pNext;
        kept_free(pRetired);
        pRetired = pNext;
    }
    iRetired = 0;
}
