# SPDX-License-Identifier: Apache-2.0
# The second domain of the lab, of a forest of its own, that trusts the first one and is trusted by it. It is there
# with PELORA_LAB_KIND=trusted (make_trusted.sh). Read after lab_settings.sh.
partner_realm=PARTNER.TEST
partner_domain=partner.test
partner_base=DC=partner,DC=test
partner_host=pdc
partner_server=$partner_host.$partner_domain
partner_address=10.77.0.9
partner_folder=$lab_home/partner
