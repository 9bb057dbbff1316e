/** @file
 * The whole interface of the library. */
#ifndef PM_H
#define PM_H

#include "pm_attributes.h"
#include "pm_base.h"
#include "pm_board_ports.h"
#include "pm_booking.h"
#include "pm_classes.h"
#include "pm_co_class.h"
#include "pm_component.h"
#include "pm_debug_window.h"
#include "pm_description.h"
#include "pm_dynamic_data.h"
#include "pm_events.h"
#include "pm_hooks.h"
#include "pm_identity.h"
#include "pm_object_deletion.h"
#include "pm_restore.h"
#include "pm_result.h"
#include "pm_reverse_lookup.h"
#include "pm_sapi.h"
#include "pm_spec.h"
#include "pm_static_data.h"
#include "pm_sub_attr.h"
#include "pm_sub_line.h"
#include "pm_sub_lookup.h"
#include "pm_sync.h"
#include "pm_trace.h"
#include "pm_virtual_ptp.h"
#include "pm_virtual_system.h"
#include "pm_walk.h"

#endif
