#pragma once

// One value of every kind, with what is hard to write in XML.

#include <limits>

#include "plist/property_value.h"

namespace brindle {

/// tests/end_to_end/property_lists.py makes the same in Python. No references: it has none in XML.
inline PropertyValue sample_list() {
  using Array = PropertyValue::Array;
  PropertyDictionary inner;
  inner.append(u"zero", 0);
  inner.append(u"", u"");
  PropertyDictionary list;
  list.append(u"text", u"é <&>\"' \U0001F600 ]]>");
  list.append(u"white", u"  two\n\tlines\r\n ");
  list.append(u"ключ & <key>", Array{Array{}, PropertyDictionary{}, inner, true, false});
  list.append(u"numbers", Array{0, -1, 255, 256, 65536, std::int64_t{1} << 32U,
                                std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()});
  list.append(u"reals", Array{0.5, -1.25, 0.1, 1e300, 5e-324});
  list.append(u"date", Date(std::chrono::sys_days(std::chrono::year{2026} / 11 / 21) + std::chrono::seconds(36005)));
  list.append(u"old", Date(std::chrono::sys_days(std::chrono::year{1904} / 1 / 1)));
  PropertyValue::Data data;
  for (unsigned i = 0; i < 300; ++i) data.push_back(static_cast<std::uint8_t>(i));
  list.append(u"data", data);
  list.append(u"nothing", PropertyValue::Data{});
  list.append(u"long", std::u16string(300, u'x'));
  return list;
}

}  // namespace brindle
