// SPDX-License-Identifier: MIT

#ifndef APP_DECODE_TICK_H_
#define APP_DECODE_TICK_H_

#include "gateway/panel_gateway.h"
#include "switcher/link.h"

namespace app {

// One tick of the decode timer: decodes at most one message of the switcher, then serves the
// panels.  False when there was no work, so that the timer can rest.
bool DecodeTick(switcher::Link& link, gateway::PanelGateway& panels);

}  // namespace app

#endif  // APP_DECODE_TICK_H_
