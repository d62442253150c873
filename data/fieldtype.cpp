// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "fieldtype.h"

#include <QString>

#include <array>

#include <mysql.h>

namespace fieldtype {
namespace {

constexpr unsigned int BinaryCharset = 63; ///< bytes that are no letters

struct TypeName
{
    enum_field_types eType;
    const char* pcName;
    const char* pcBinary; ///< of bytes that are no letters
};

constexpr std::array TypeNames = {
    TypeName{MYSQL_TYPE_TINY, "TINYINT", "TINYINT"},
    TypeName{MYSQL_TYPE_SHORT, "SMALLINT", "SMALLINT"},
    TypeName{MYSQL_TYPE_INT24, "MEDIUMINT", "MEDIUMINT"},
    TypeName{MYSQL_TYPE_LONG, "INT", "INT"},
    TypeName{MYSQL_TYPE_LONGLONG, "BIGINT", "BIGINT"},
    TypeName{MYSQL_TYPE_FLOAT, "FLOAT", "FLOAT"},
    TypeName{MYSQL_TYPE_DOUBLE, "DOUBLE", "DOUBLE"},
    TypeName{MYSQL_TYPE_NEWDECIMAL, "DECIMAL", "DECIMAL"},
    TypeName{MYSQL_TYPE_BIT, "BIT", "BIT"},
    TypeName{MYSQL_TYPE_DATE, "DATE", "DATE"},
    TypeName{MYSQL_TYPE_TIME, "TIME", "TIME"},
    TypeName{MYSQL_TYPE_DATETIME, "DATETIME", "DATETIME"},
    TypeName{MYSQL_TYPE_TIMESTAMP, "TIMESTAMP", "TIMESTAMP"},
    TypeName{MYSQL_TYPE_YEAR, "YEAR", "YEAR"},
    TypeName{MYSQL_TYPE_STRING, "CHAR", "BINARY"},
    TypeName{MYSQL_TYPE_VAR_STRING, "VARCHAR", "VARBINARY"},
    TypeName{MYSQL_TYPE_BLOB, "TEXT", "BLOB"},
    TypeName{MYSQL_TYPE_GEOMETRY, "GEOMETRY", "GEOMETRY"},
};

bool isUnsignedNumber(const MYSQL_FIELD& oField)
{
    return IS_NUM(oField.type) && (oField.flags & UNSIGNED_FLAG) != 0 && oField.type != MYSQL_TYPE_YEAR;
}

} // namespace

QString name(const MYSQL_FIELD& oField)
{
    if ((oField.flags & (ENUM_FLAG | SET_FLAG)) != 0)
        return QLatin1String((oField.flags & SET_FLAG) != 0 ? "SET" : "ENUM");
    for (const TypeName& oName : TypeNames)
        if (oName.eType == oField.type)
            return QLatin1String(oField.charsetnr == BinaryCharset ? oName.pcBinary : oName.pcName)
                + QLatin1String(isUnsignedNumber(oField) ? " UNSIGNED" : "");
    return {};
}

} // namespace fieldtype
