// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the sensors of a phone in the page's pose read. First the arithmetic, which knows nothing of the page; rotations
// and vectors are objects with "x", "y" and "z", angles are in degrees. Then what runs in the scope of the page.
.import "three.mjs" as Three

const axes = ["x", "y", "z"];
const degreesPerRadian = 180 / Math.PI;
const greatestEmulatedValue = 3000;

function radians(degrees) {
    return degrees / degreesPerRadian;
}

function sine(degrees) {
    return Math.sin(radians(degrees));
}

function cosine(degrees) {
    return Math.cos(radians(degrees));
}

// Gravity on the phone's axes, in units of acceleration.
function gravityOnPhone(rotation, acceleration) {
    const [sx, sy, sz] = axes.map(axis => sine(rotation[axis]));
    const [cx, cy, cz] = axes.map(axis => cosine(rotation[axis]));
    return new Three.Vector3(cx * sz + sx * sy * cz, cx * cz - sx * sy * sz, -cy * sx).multiplyScalar(acceleration);
}

// A vector of the room on the phone's axes; of its y and z parts, what falls on the phone's x axis is counted with the
// opposite sign.
function roomOnPhone(rotation, vector) {
    const [sx, sy, sz] = axes.map(axis => sine(rotation[axis]));
    const [cx, cy, cz] = axes.map(axis => cosine(rotation[axis]));
    const {x, y, z} = vector;
    return new Three.Vector3(
        x * cy * cz - y * cx * sz - y * sx * sy * cz - z * sx * sz + z * cx * sy * cz,
        -x * cy * sz + y * cx * cz - y * sx * sy * sz + z * sx * cz + z * cx * sy * sz,
        x * sy - y * sx * cy + z * cx * cy);
}

// Of uniformly accelerated motion: from one position to the next, in metres, having begun at a speed, within some seconds.
function linearAcceleration(position, previous, speed, seconds) {
    return 2 * (position - previous) / (seconds * seconds) - 2 * speed / seconds;
}

// From one angle to the next. Past the end of the range it counts as positive, whichever end that was.
function turn(angle, previous, wrapped) {
    return wrapped ? 360 - Math.abs(angle) - Math.abs(previous) : angle - previous;
}

// Degrees per second on the phone's axes, from turns per second about the sliders'.
function rotationRate(rotation, frequency) {
    const {x: fx, y: fy, z: fz} = frequency;
    const turns = new Three.Vector3(
        fx * cosine(rotation.z) * cosine(rotation.y) + fy * sine(rotation.z),
        -fx * sine(rotation.z) * cosine(rotation.y) + fy * cosine(rotation.z),
        fz + fx * sine(rotation.y));
    return turns.multiplyScalar(2 * Math.PI * degreesPerRadian);
}

// The field, in its own unit, on the axes of a phone that was rotated about x, then y, then z of its own.
function fieldOnPhone(rotation, field) {
    const euler = new Three.Euler(radians(rotation.x), radians(rotation.y), radians(rotation.z));
    const direction = new Three.Vector3(field.x, field.y, field.z);
    const strength = direction.length();
    const [x, y, z] = [[1, 0, 0], [0, 1, 0], [0, 0, 1]].map(unit => {
        const angle = new Three.Vector3(...unit).applyEuler(euler).angleTo(direction);
        return strength === 0 || isNaN(angle) ? 0 : strength * Math.cos(angle);
    });
    return new Three.Vector3(x, y, z);
}

// To what the emulator's sensors take.
function limitEmulatedValue(value) {
    return Math.max(-greatestEmulatedValue, Math.min(value, greatestEmulatedValue));
}

// In m/s², in whole thousandths of g, as the emulator gets it.
function convertAccValue(value) {
    return Math.trunc(value * accGravityCoef) / accGravityCoef + 0; // no minus for zero
}

// --- the page ---

function rotation() {
    return {x: xRotSlider.value, y: yRotSlider.value, z: zRotSlider.value};
}

function updateAccelerometerValues() {
    if (!accelerometerLabel.available)
        return;
    const values = gravityOnPhone(rotation(), gravityAccelEarth);
    if (!rotationMode)
        values.add(roomOnPhone(rotation(), movement()));
    accXValue = values.x;
    accYValue = values.y;
    accZValue = values.z;
    const [x, y, z] = values.toArray().map(value => limitEmulatedValue(value * accGravityCoef));
    sensorsEmulationManager.setAccelerometerValues(x, y, z);
}

// The linear acceleration in the room.
function movement() {
    return {
        x: linearAcceleration(positionInMetres(xMoveSlider), xMovePrevValue, xMoveInitSpeed, timerInterval),
        y: linearAcceleration(positionInMetres(yMoveSlider), yMovePrevValue, yMoveInitSpeed, timerInterval),
        z: linearAcceleration(positionInMetres(zMoveSlider), zMovePrevValue, zMoveInitSpeed, timerInterval)
    };
}

function positionInMetres(slider) {
    return slider.value * phoneSizeCoefficient;
}

function calculateRotationFrequency() {
    const turnsPerDegree = 1 / (360 * timerInterval);
    xGyroRotFrequency = turn(xRotSlider.value, xGyroPrevValue, xRotSliderReset) * turnsPerDegree;
    yGyroRotFrequency = turn(yRotSlider.value, yGyroPrevValue, yRotSliderReset) * turnsPerDegree;
    zGyroRotFrequency = turn(zRotSlider.value, zGyroPrevValue, zRotSliderReset) * turnsPerDegree;
    xRotSliderReset = false;
    yRotSliderReset = false;
    zRotSliderReset = false;
}

function updateGyroscopeValues() {
    if (!gyroscopeLabel.enabled)
        return;
    const frequency = {x: xGyroRotFrequency, y: yGyroRotFrequency, z: zGyroRotFrequency};
    setGyroscopeValues(rotationRate(rotation(), frequency));
}

function setGyroscopeValues(rate) {
    gyroXValue = rate.x;
    gyroYValue = rate.y;
    gyroZValue = rate.z;
    const [x, y, z] = [rate.x, rate.y, rate.z].map(limitEmulatedValue);
    sensorsEmulationManager.setGyroscopeValues(x, y, z);
}

function updateMagnetometerValues() {
    if (!magnetometerLabel.enabled || !rotationMode)
        return;
    const values = fieldOnPhone(rotation(), sensorsEmulationManager.magneticField);
    magnetXValue = values.x;
    magnetYValue = values.y;
    magnetZValue = values.z;
    const [x, y, z] = values.toArray().map(value => value * microToWholeCoef);
    sensorsEmulationManager.setMagnetometerValues(x, y, z);
}

// What a pose alone decides.
function updatePoseValues() {
    updateAccelerometerValues();
    updateMagnetometerValues();
}

function handleActivation() {
    updateAccelerometerValues();
    setGyroscopeValues({x: 0, y: 0, z: 0});
    updateMagnetometerValues();
}

function handleTimer() {
    if (rotationMode)
        stepRotation();
    else
        stepMovement();
}

function stepRotation() {
    calculateRotationFrequency();
    updateGyroscopeValues();
    xGyroPrevValue = xRotSlider.value;
    yGyroPrevValue = yRotSlider.value;
    zGyroPrevValue = zRotSlider.value;
}

function stepMovement() {
    xMoveInitSpeed = (xMovePrevValue - xMovePrevPrevValue) / timerInterval;
    yMoveInitSpeed = (yMovePrevValue - yMovePrevPrevValue) / timerInterval;
    zMoveInitSpeed = (zMovePrevValue - zMovePrevPrevValue) / timerInterval;
    updateAccelerometerValues();
    xMovePrevPrevValue = xMovePrevValue;
    yMovePrevPrevValue = yMovePrevValue;
    zMovePrevPrevValue = zMovePrevValue;
    xMovePrevValue = positionInMetres(xMoveSlider);
    yMovePrevValue = positionInMetres(yMoveSlider);
    zMovePrevValue = positionInMetres(zMoveSlider);
}

function switchOrientation(index) {
    const [x, z] = [[0, 0], [0, -90], [0, 180], [0, 90], [-90, 0], [90, 0]][index];
    xRotSlider.value = x;
    yRotSlider.value = 0;
    zRotSlider.value = z;
    updatePoseValues();
}

function switchMode() {
    if (rotationMode)
        moveRadioButton.checked = true;
    else
        rotationRadioButton.checked = true;
}

function handleKeyPress(event) {
    if (event.modifiers & Qt.ControlModifier)
        controlModifierPressed = true;
    resetSlidersValue();
    event.accepted = rotationMode ? rotateByKey(event) : moveByKey(event);
    if (rotationMode)
        updatePoseValues();
}

// Any key or button may be the last one held.
function handleKeyRelease(event) {
    if (event.modifiers === Qt.NoModifier)
        controlModifierPressed = false;
}

// Past an end of its range a rotation goes on at the other one.
function resetSlidersValue() {
    xRotSliderReset = wrapRotation(xRotSlider) || xRotSliderReset;
    yRotSliderReset = wrapRotation(yRotSlider) || yRotSliderReset;
    zRotSliderReset = wrapRotation(zRotSlider) || zRotSliderReset;
}

function wrapRotation(slider) {
    if (Math.abs(slider.value) <= rotMaxValue)
        return false;
    slider.value = -rotMaxValue * Math.sign(slider.value);
    return true;
}

// The two return whether the key has a meaning.
function rotateByKey(event) {
    const sideways = event.modifiers & Qt.ShiftModifier ? yRotSlider : zRotSlider;
    switch (event.key) {
    case Qt.Key_Left:
        sideways.value -= 1;
        return true;
    case Qt.Key_Right:
        sideways.value += 1;
        return true;
    case Qt.Key_Up:
        xRotSlider.value += 1;
        return true;
    case Qt.Key_Down:
        xRotSlider.value -= 1;
        return true;
    }
    return false;
}

function moveByKey(event) {
    switch (event.key) {
    case Qt.Key_Left:
        moveByStep(xMoveSlider, -stepSize);
        return true;
    case Qt.Key_Right:
        moveByStep(xMoveSlider, stepSize);
        return true;
    case Qt.Key_Up:
        moveByStep(yMoveSlider, stepSize);
        return true;
    case Qt.Key_Down:
        moveByStep(yMoveSlider, -stepSize);
        return true;
    }
    return false;
}

function moveByStep(slider, step) {
    const inside = step < 0 ? slider.value > moveMinValue : slider.value < moveMaxValue;
    if (inside)
        slider.value = Number((slider.value + step).toFixed(9)); // a row of steps must not miss zero, nor the ends
}

// Where the phone's centre is on the screen. A phone that is farther away moves less.
function updateXOrigin() {
    xOriginCoordinate = mouseArea.width / 2 + xMoveSlider.value * mouseArea.width / (8 * (1 + Math.abs(zMoveSlider.value)));
}

function updateYOrigin() {
    yOriginCoordinate = mouseArea.height / 2 - yMoveSlider.value * mouseArea.height / (4 * (1 + Math.abs(zMoveSlider.value)));
}

function handleMousePress(mouse) {
    xBaseCoordinate = mouse.x;
    yBaseCoordinate = mouse.y;
}

function handleMouseMove(mouse) {
    if (rotationMode)
        rotateByMouse(mouse);
    else
        moveByMouse(mouse);
}

function rotateByMouse(mouse) {
    const mesh = smartphoneModel.mesh;
    if (!mesh)
        return;
    const deltaZ = zRotationSign(mouse) * pointerTurn(mouse) / 2;
    mesh.rotateOnWorldAxis(new Three.Vector3(1, 0, 0), radians((mouse.y - yBaseCoordinate) / 2));
    mesh.rotateOnWorldAxis(new Three.Vector3(0, 1, 0), radians((mouse.x - xBaseCoordinate) / 2));
    mesh.rotateOnWorldAxis(new Three.Vector3(0, 0, 1), radians(deltaZ));
    xRotSlider.value = mesh.rotation.x * degreesPerRadian;
    yRotSlider.value = mesh.rotation.y * degreesPerRadian;
    zRotSlider.value = mesh.rotation.z * degreesPerRadian - smartphoneModel.cameraAngle;
    updatePoseValues();
    handleMousePress(mouse);
}

// Only a pointer that crosses the vertical line through the phone's centre turns the phone about the line of sight.
function zRotationSign(mouse) {
    const before = xBaseCoordinate - xOriginCoordinate;
    const after = mouse.x - xOriginCoordinate;
    if (before === 0 || after === 0 || Math.sign(before) === Math.sign(after))
        return 0;
    const direction = Math.sign(mouse.y - yBaseCoordinate);
    return after > before ? -direction : direction;
}

// The angle between the last and the current pointer as seen from the phone's centre. It counts less close to the centre's
// height, where a small movement makes a great angle.
function pointerTurn(mouse) {
    const base = new Three.Vector3(xBaseCoordinate - xOriginCoordinate, yBaseCoordinate - yOriginCoordinate, 0);
    const current = new Three.Vector3(mouse.x - xOriginCoordinate, mouse.y - yOriginCoordinate, 0);
    const cosineBetween = base.normalize().dot(current.normalize());
    const offset = Math.abs(mouse.y - yOriginCoordinate);
    return Math.acos(Number(cosineBetween.toFixed(3))) * degreesPerRadian * sine(offset > 30 ? 90 : offset);
}

function moveByMouse(mouse) {
    const farthest = 2.1;
    const x = xMoveSlider.value + (mouse.x - xBaseCoordinate) / (mouseArea.width / 6);
    if (Math.abs(x) < farthest) {
        xMoveSlider.value = x;
        xBaseCoordinate = mouse.x;
    }
    const y = yMoveSlider.value - (mouse.y - yBaseCoordinate) / (mouseArea.height / 4);
    if (Math.abs(y) < farthest) {
        yMoveSlider.value = y;
        yBaseCoordinate = mouse.y;
    }
}

function handleWheel(wheel) {
    const z = zMoveSlider.value + 0.2 * Math.sign(wheel.angleDelta.y);
    zMoveSlider.value = Math.max(moveMinValue, Math.min(Number(z.toFixed(9)), moveMaxValue));
}
