// SPDX-License-Identifier: Apache-2.0
#ifndef PELORA_RESOURCES_REGISTRATION_REGISTRATION_H_
#define PELORA_RESOURCES_REGISTRATION_REGISTRATION_H_

/* Numbers of the registration scripts among the module's resources (type REGISTRY). The resource
 * compiler reads this file too, so there is nothing in it but definitions. */

/* The application identifier. */
#define IDR_APPLICATION 101
/* One component class; run once for each. */
#define IDR_COMPONENT_CLASS 102

#endif
