one
two
 *** Flag section
﻿3
