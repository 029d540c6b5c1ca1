#pragma once

#include <xcb/res.h>

#include "tests/x11/x_connection.h"

namespace hushpane::x11_tests {

// The pixmaps that a process keeps on the server (X-Resource 1.2).
inline std::uint32_t pixmapsOf(const XConnection& x, pid_t process) {
  xcb_res_client_id_spec_t everyone{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const auto ids =
      own(xcb_res_query_client_ids_reply(x.get(), xcb_res_query_client_ids(x.get(), 1, &everyone), nullptr));
  std::uint32_t count = 0;
  for (auto id = xcb_res_query_client_ids_ids_iterator(ids.get()); id.rem; xcb_res_client_id_value_next(&id)) {
    if (pid_t(*xcb_res_client_id_value_value(id.data)) != process) continue;
    const auto resources = own(xcb_res_query_client_resources_reply(
        x.get(), xcb_res_query_client_resources(x.get(), id.data->spec.client), nullptr));
    for (auto type = xcb_res_query_client_resources_types_iterator(resources.get()); type.rem;
         xcb_res_type_next(&type)) {
      if (type.data->resource_type == x.atom("PIXMAP")) count += type.data->count;
    }
  }
  return count;
}

}  // namespace hushpane::x11_tests
