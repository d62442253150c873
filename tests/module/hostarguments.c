/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostarguments.h"

#include "hostcolors.h"
#include "hostmemory.h"
#include "hostmodule.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum
{
    Untouched = -7777,
    CanarySize = 16
};

static struct Argument oLastText; /* that is kept */

static void* memory(struct Argument* pArgument, size_t uSize)
{
    pArgument->uSize = uSize;
    pArgument->pSlot = memory_new(uSize);
    return pArgument->pSlot;
}

static int* int_memory(struct Argument* pArgument, size_t uCount)
{
    return memory(pArgument, uCount * sizeof(int));
}

static size_t count_numbers(const char* pcNumbers)
{
    size_t uCount = pcNumbers[0] == '\0' ? 0 : 1;
    for (; *pcNumbers != '\0'; pcNumbers++)
        if (*pcNumbers == ',')
            uCount++;
    return uCount;
}

static void int_array(struct Argument* pArgument, const char* pcNumbers)
{
    int* piNumbers = int_memory(pArgument, count_numbers(pcNumbers));
    for (char* pcNext = NULL; *pcNumbers != '\0'; pcNumbers = *pcNext == ',' ? pcNext + 1 : pcNext)
        *piNumbers++ = (int)strtol(pcNumbers, &pcNext, 10);
}

static void int_sequence(struct Argument* pArgument, const char* pcFirstAndLast)
{
    const int iFirst = atoi(pcFirstAndLast);
    const int iLast = atoi(strchr(pcFirstAndLast, '-') + 1);
    int* piNumbers = int_memory(pArgument, (size_t)(iLast - iFirst + 1));
    for (int i = iFirst; i <= iLast; i++)
        *piNumbers++ = i;
}

static void text(struct Argument* pArgument, const char* pcText)
{
    strcpy(memory(pArgument, strlen(pcText) + 1), pcText);
}

static void hexadecimal_text(struct Argument* pArgument, const char* pcDigits)
{
    const size_t uLength = strlen(pcDigits) / 2;
    char* pcText = memory(pArgument, uLength + 1);
    for (size_t u = 0; u < uLength; u++) {
        const char acByte[] = {pcDigits[2 * u], pcDigits[2 * u + 1], '\0'};
        pcText[u] = (char)strtol(acByte, NULL, 16);
    }
    pcText[uLength] = '\0';
}

static void repeated_text(struct Argument* pArgument, const char* pcValue)
{
    const size_t uTimes = (size_t)atol(pcValue);
    const char* pcOnce = strchr(pcValue, 'x') + 1;
    const size_t uLength = strlen(pcOnce);
    char* pcText = memory(pArgument, uTimes * uLength + 1);
    pcText[0] = '\0';
    for (size_t u = 0; u < uTimes; u++)
        memcpy(pcText + u * uLength, pcOnce, uLength + 1);
}

static void int_results(struct Argument* pArgument, int iCount)
{
    int* piResults = int_memory(pArgument, (size_t)iCount);
    pArgument->iResults = iCount;
    for (int i = 0; i < iCount; i++)
        piResults[i] = Untouched;
}

static void text_result(struct Argument* pArgument, size_t uSize)
{
    char* pcBuffer = memory(pArgument, uSize + CanarySize);
    pArgument->bText = true;
    memset(pcBuffer, '~', uSize + CanarySize);
    strcpy(pcBuffer, "untouched");
}

static void make_result(struct Argument* pArgument, char cType, const char* pcValue)
{
    if (cType == 'i')
        int_results(pArgument, atoi(pcValue));
    else
        text_result(pArgument, (size_t)atoi(pcValue));
}

static void make_input(struct Argument* pArgument, char cType, const char* pcValue)
{
    if (cType == 'i' || cType == 'n')
        int_array(pArgument, pcValue);
    else if (cType == 's')
        int_sequence(pArgument, pcValue);
    else if (cType == 't')
        text(pArgument, pcValue);
    else if (cType == 'h')
        hexadecimal_text(pArgument, pcValue);
    else if (cType == 'r')
        repeated_text(pArgument, pcValue);
    else
        abort();
    memory_make_read_only(pArgument->pSlot, pArgument->uSize);
}

void argument_make(struct Argument* pArgument, const char* pcField)
{
    const char* pcValue;
    memset(pArgument, 0, sizeof *pArgument);
    if (strcmp(pcField, "null") == 0)
        return;
    pcValue = strchr(pcField, ':') + 1;
    pArgument->bKeptText = pcField[0] == 'k';
    pArgument->bKept = pcField[0] == 'k' || pcField[0] == 'c';
    if (pcField[0] == 'c')
        pArgument->pSlot = colors_array(pcValue);
    else if (pcField[0] == 'o')
        make_result(pArgument, pcField[1], pcValue);
    else if (pcField[0] == 'k')
        make_input(pArgument, pcField[1] == ':' ? 't' : pcField[1], pcValue);
    else
        make_input(pArgument, pcField[0], pcValue);
}

void append_text(char* pcResult, const char* pcText)
{
    const size_t uLength = strlen(pcResult);
    snprintf(pcResult + uLength, ResultSize - uLength, "%s%s", uLength == 0 ? "" : " ", pcText);
}

void argument_append_results(const struct Argument* pArgument, char* pcResult)
{
    const int* piResults = pArgument->pSlot;
    const char* pcText = pArgument->pSlot;
    for (int i = 0; i < pArgument->iResults; i++) {
        char acNumber[20];
        snprintf(acNumber, sizeof acNumber, "%d", piResults[i]);
        append_text(pcResult, acNumber);
    }
    if (!pArgument->bText)
        return;
    append_text(pcResult, pcText);
    for (size_t u = pArgument->uSize - CanarySize; u < pArgument->uSize; u++)
        if (pcText[u] != '~') {
            append_text(pcResult, "OVERRUN");
            return;
        }
}

void argument_give_back(struct Argument* pArgument)
{
    if (!pArgument->bKept)
        memory_give_back(pArgument->pSlot, pArgument->uSize);
    else if (pArgument->bKeptText)
        oLastText = *pArgument;
}

bool arguments_command(char** apcFields)
{
    if (strcmp(apcFields[0], "drop text") != 0)
        return false;
    memory_give_back(oLastText.pSlot, oLastText.uSize);
    oLastText.pSlot = NULL;
    return true;
}
