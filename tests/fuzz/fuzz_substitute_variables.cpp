#include "canopen/Helper.h"

#include <cstdlib>

/** Any name with any place: no crash, no undefined step, and a text without "$" and "{" stays as it is. */
extern "C" int LLVMFuzzerTestOneInput(const uchar *data, size_t size)
{
    if (size < 4)
        return 0;
    const auto index = quint16(data[0] << 8 | data[1]);
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 4), qsizetype(size - 4));
    const QString result = Helper::substituteVariables(text, index, data[2], data[3]);
    if (!text.contains(u'$') && !text.contains(u'{') && result != text)
        std::abort();
    const QString list = Helper::addLowerCaseUtoNumberLists(text);
    if (list.size() < text.size() || Helper::addLowerCaseUtoNumberLists(list) != list)
        std::abort();
    return 0;
}
