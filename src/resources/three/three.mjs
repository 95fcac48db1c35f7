// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the pages use of three.js; the build leaves out the rest.
export { Euler } from "three/src/math/Euler.js";
export { Vector3 } from "three/src/math/Vector3.js";
