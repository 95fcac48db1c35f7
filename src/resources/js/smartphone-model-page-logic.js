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
        return isNaN(angle) ? 0 : strength * Math.cos(angle);
    });
    return new Three.Vector3(x, y, z);
}

// To what the emulator's sensors take.
function limitEmulatedValue(value) {
    return Math.max(-greatestEmulatedValue, Math.min(value, greatestEmulatedValue));
}

// An acceleration in whole parts of which "coefficient" make one of its unit.
function convertAccValue(value, coefficient) {
    return Math.trunc(value * coefficient) / coefficient + 0; // no minus for zero
}

// --- the page ---

function rotation() {
    return {x: rotSliders.x.value, y: rotSliders.y.value, z: rotSliders.z.value};
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
    manager.setAccelerometerValues(x, y, z);
}

// The linear acceleration in the room.
function movement() {
    const [x, y, z] = axes.map(axis => linearAcceleration(
        positionInMetres(axis), root[axis + "MovePrevValue"], root[axis + "MoveInitSpeed"], timerInterval));
    return {x, y, z};
}

function positionInMetres(axis) {
    return moveSliders[axis].value * phoneSizeCoefficient;
}

function calculateRotationFrequency() {
    for (const axis of axes) {
        const degrees = turn(rotSliders[axis].value, root[axis + "GyroPrevValue"], root[axis + "RotSliderReset"]);
        root[axis + "GyroRotFrequency"] = degrees / (360 * timerInterval);
        root[axis + "RotSliderReset"] = false;
    }
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
    manager.setGyroscopeValues(x, y, z);
}

function updateMagnetometerValues() {
    if (!magnetometerLabel.enabled || !rotationMode)
        return;
    const values = fieldOnPhone(rotation(), manager.magneticField);
    magnetXValue = values.x;
    magnetYValue = values.y;
    magnetZValue = values.z;
    const [x, y, z] = values.toArray().map(value => value * microToWholeCoef);
    manager.setMagnetometerValues(x, y, z);
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
    atRest = axes.every(axis => root[axis + "GyroRotFrequency"] === 0);
    for (const axis of axes)
        root[axis + "GyroPrevValue"] = rotSliders[axis].value;
}

function stepMovement() {
    for (const axis of axes)
        root[axis + "MoveInitSpeed"] = (root[axis + "MovePrevValue"] - root[axis + "MovePrevPrevValue"]) / timerInterval;
    updateAccelerometerValues();
    atRest = axes.every(axis => root[axis + "MoveInitSpeed"] === 0 && root[axis + "MovePrevValue"] === positionInMetres(axis));
    for (const axis of axes) {
        root[axis + "MovePrevPrevValue"] = root[axis + "MovePrevValue"];
        root[axis + "MovePrevValue"] = positionInMetres(axis);
    }
}

function switchOrientation(index) {
    for (const axis of axes)
        rotSliders[axis].value = orientations[index][axis];
    updatePoseValues();
}

function switchMode() {
    if (rotationMode)
        moveRadioButton.checked = true;
    else
        rotationRadioButton.checked = true;
    if (scrollView.focusItem?.visible === false) // a slider of the other mode
        takeKeys();
}

// The arrow keys turn and move the phone unless someone has gone to another control by keys.
function takeKeys() {
    content.forceActiveFocus();
}

// Nothing on the page itself is a stop of the Tab key.
function handleTab(forward) {
    content.nextItemInFocusChain(forward).forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
}

// Keys that lead elsewhere, and those held with them: whoever walks past has not touched the phone.
const walkingKeys = [Qt.Key_Tab, Qt.Key_Backtab, Qt.Key_Shift, Qt.Key_Alt, Qt.Key_AltGr, Qt.Key_Meta];

function handleKeyPress(event) {
    if (textEdited) { // which needs its keys itself
        if (event.key === Qt.Key_Escape)
            takeKeys();
        return;
    }
    if (event.modifiers & Qt.ControlModifier)
        controlModifierPressed = true;
    resetSlidersValue();
    event.accepted = rotationMode ? rotateByKey(event) : moveByKey(event);
    if (rotationMode && !walkingKeys.includes(event.key))
        updatePoseValues();
}

// Any key or button may be the last one held.
function handleKeyRelease(event) {
    if (event.modifiers === Qt.NoModifier)
        controlModifierPressed = false;
}

// Past an end of its range a rotation goes on at the other one.
function resetSlidersValue() {
    for (const axis of axes) {
        const slider = rotSliders[axis];
        if (Math.abs(slider.value) > rotMaxValue) {
            slider.value = -rotMaxValue * Math.sign(slider.value);
            root[axis + "RotSliderReset"] = true;
        }
    }
}

// The two return whether the key has a meaning.
function rotateByKey(event) {
    const sideways = event.modifiers & Qt.ShiftModifier ? rotSliders.y : rotSliders.z;
    switch (event.key) {
    case Qt.Key_Left:
        sideways.value -= 1;
        return true;
    case Qt.Key_Right:
        sideways.value += 1;
        return true;
    case Qt.Key_Up:
        rotSliders.x.value += 1;
        return true;
    case Qt.Key_Down:
        rotSliders.x.value -= 1;
        return true;
    }
    return false;
}

function moveByKey(event) {
    switch (event.key) {
    case Qt.Key_Left:
        moveByStep(moveSliders.x, -stepSize);
        return true;
    case Qt.Key_Right:
        moveByStep(moveSliders.x, stepSize);
        return true;
    case Qt.Key_Up:
        moveByStep(moveSliders.y, stepSize);
        return true;
    case Qt.Key_Down:
        moveByStep(moveSliders.y, -stepSize);
        return true;
    }
    return false;
}

function moveByStep(slider, step) {
    const inside = step < 0 ? slider.value > moveMinValue : slider.value < moveMaxValue;
    if (inside)
        slider.value = Number((slider.value + step).toFixed(9)); // a row of steps must not miss zero, nor the ends
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
    rotSliders.x.value = mesh.rotation.x * degreesPerRadian;
    rotSliders.y.value = mesh.rotation.y * degreesPerRadian;
    rotSliders.z.value = mesh.rotation.z * degreesPerRadian - smartphoneModel.cameraAngle;
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
    const x = moveSliders.x.value + (mouse.x - xBaseCoordinate) / (mouseArea.width / 6);
    if (Math.abs(x) < farthest) {
        moveSliders.x.value = x;
        xBaseCoordinate = mouse.x;
    }
    const y = moveSliders.y.value - (mouse.y - yBaseCoordinate) / (mouseArea.height / 4);
    if (Math.abs(y) < farthest) {
        moveSliders.y.value = y;
        yBaseCoordinate = mouse.y;
    }
}

function handleWheel(wheel) {
    const z = moveSliders.z.value + 0.2 * Math.sign(wheel.angleDelta.y);
    moveSliders.z.value = Math.max(moveMinValue, Math.min(Number(z.toFixed(9)), moveMaxValue));
}
