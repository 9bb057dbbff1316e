/* What both variants of the product have in common. */
#ifndef PORT_LIGHTS_H
#define PORT_LIGHTS_H

enum {
  PORT_LIGHTS_TYPE = 20,        /* the port type, as port_lights.toml defines it */
  PORT_LIGHTS_COMPONENT = 0x720 /* component type under which the product prints */
};

#endif
