// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtTest
import "phone/fakethree.js" as FakeThree
import "phone/matrices.js" as Matrices
import "qrc:/emulationmanagement/js/smartphone-model-logic.js" as Scene
import "qrc:/emulationmanagement/js/smartphone-model-page-logic.js" as Logic

// The page's formulas against rotation matrices, over a grid of poses that has every gimbal lock in it.
TestCase {
    id: root

    readonly property double gravity: 9.80665

    name: "PhoneArithmetic"

    // Calls back with 13,824 poses, 15 degrees apart on each axis, and 1,000 anywhere.
    function forEachPose(callback: var) {
        const angles = Array.from({
            length: 24
        }, (_, i) => -165 + 15 * i);
        let count = 0;
        for (const x of angles) {
            for (const y of angles) {
                for (const z of angles) {
                    callback({
                        x,
                        y,
                        z
                    });
                    ++count;
                }
            }
        }
        for (; count < 14824; ++count)
            callback({
                x: random(180),
                y: random(180),
                z: random(180)
            });
    }

    property int seed: 1

    function random(magnitude: double): double {
        seed = (seed * 16807) % 2147483647; // Lehmer's numbers: the same ones in every run
        return (seed / 2147483647 * 2 - 1) * magnitude;
    }

    function vector(magnitude: double): var {
        return [random(magnitude), random(magnitude), random(magnitude)];
    }

    function asObject(values: var): var {
        const [x, y, z] = values;
        return {
            x,
            y,
            z
        };
    }

    function verifyClose(actual: var, expected: var, tolerance: double, rotation: var) {
        const values = actual.toArray();
        for (let i = 0; i < 3; ++i) {
            if (!(Math.abs(values[i] - expected[i]) <= tolerance))
                fail("%1, not %2, for %3".arg(JSON.stringify(values)).arg(JSON.stringify(expected)).arg(JSON.stringify(rotation)));
        }
    }

    function test_gravity() {
        forEachPose(rotation => {
            verifyClose(Logic.gravityOnPhone(rotation, gravity), Matrices.onPhone(rotation, [0, gravity, 0]), 1e-12, rotation);
        });
    }

    // What falls on the phone's x axis is no projection: the room's y and z count with the opposite sign there.
    function test_movement() {
        let different = 0;
        forEachPose(rotation => {
            const [x, y, z] = vector(50);
            const projection = Matrices.onPhone(rotation, [x, y, z]);
            const expected = [Matrices.onPhone(rotation, [x, -y, -z])[0], projection[1], projection[2]];
            verifyClose(Logic.roomOnPhone(rotation, asObject([x, y, z])), expected, 1e-11, rotation);
            if (Math.abs(expected[0] - projection[0]) > 1)
                ++different;
        });
        verify(different > 10000); // the tolerance hides no such difference
    }

    function test_rotationRate() {
        forEachPose(rotation => {
            const frequency = asObject(vector(2));
            verifyClose(Logic.rotationRate(rotation, frequency), Matrices.angularVelocity(rotation, frequency), 1e-4, rotation);
        });
    }

    function test_field() {
        forEachPose(rotation => {
            const field = vector(100);
            verifyClose(Logic.fieldOnPhone(rotation, asObject(field)), Matrices.onPhone(rotation, field), 1e-9, rotation);
        });
    }

    function test_fieldOfNothing() {
        const rotation = asObject([10, 20, 30]);
        verifyClose(Logic.fieldOnPhone(rotation, asObject([0, 0, 0])), [0, 0, 0], 0, rotation);
    }

    // A field along an axis: the angle's cosine is at its ends, where rounding may take it past them.
    function test_fieldAlongAxes() {
        for (const sign of [1, -1]) {
            for (const axis of [0, 1, 2]) {
                const field = [0, 0, 0];
                field[axis] = sign * 48.7;
                verifyClose(Logic.fieldOnPhone(asObject([0, 0, 0]), asObject(field)), field, 1e-12, field);
            }
        }
    }

    // Uniformly accelerated from rest and from some speed: the formula gives the acceleration back.
    function test_linearAcceleration() {
        for (let i = 0; i < 10000; ++i) {
            const [start, speed, acceleration] = vector(10);
            const seconds = 0.05 + Math.abs(random(1));
            const end = start + speed * seconds + acceleration * seconds * seconds / 2;
            const actual = Logic.linearAcceleration(end, start, speed, seconds);
            verify(Math.abs(actual - acceleration) <= 1e-9, "%1, not %2".arg(actual).arg(acceleration));
        }
    }

    function test_turn_data() {
        return [
            {
                tag: "forward",
                angle: 10,
                previous: -5,
                wrapped: false,
                degrees: 15
            },
            {
                tag: "backward",
                angle: -5,
                previous: 10,
                wrapped: false,
                degrees: -15
            },
            {
                tag: "not at all",
                angle: 45,
                previous: 45,
                wrapped: false,
                degrees: 0
            },
            {
                tag: "past 180",
                angle: -179,
                previous: 179,
                wrapped: true,
                degrees: 2
            },
            {
                tag: "past -180, positive, too",
                angle: 179,
                previous: -179,
                wrapped: true,
                degrees: 2
            },
            {
                tag: "past 180 by the step that wraps",
                angle: -179,
                previous: 181,
                wrapped: true,
                degrees: 0
            },
            {
                tag: "from end to end without a mark",
                angle: -179,
                previous: 179,
                wrapped: false,
                degrees: -358
            }
        ];
    }

    function test_turn(data) {
        compare(Logic.turn(data.angle, data.previous, data.wrapped), data.degrees);
    }

    function test_limit_data() {
        return [[0, 0], [2999.999, 2999.999], [3000, 3000], [3000.001, 3000], [1e300, 3000], [-2999.999, -2999.999], [-3000, -3000], [-3000.001, -3000], [Infinity, 3000], [-Infinity, -3000]].map(([value, limited]) => ({
                    tag: value,
                    value,
                    limited
                }));
    }

    function test_limit(data) {
        compare(Logic.limitEmulatedValue(data.value), data.limited);
    }

    // In whole thousandths of g, towards zero.
    function test_shownAcceleration_data() {
        return [[0, 0], [gravity, gravity], [-gravity, -gravity], [0.0098, 0], [0.00981, gravity / 1000], [-0.0098, 0], [-0.0197, -2 * gravity / 1000]].map(([value, shown]) => ({
                    tag: value,
                    value,
                    shown
                }));
    }

    function test_shownAcceleration(data) {
        const shown = Logic.convertAccValue(data.value, 1000 / gravity);
        verify(Math.abs(shown - data.shown) <= 1e-12, shown);
        verify(!Object.is(shown, -0));
    }

    // Nothing draws the phone yet. The script's part of it is the pose: the one that the arithmetic has, on a camera that is
    // not rolled.
    function test_scene() {
        const three = FakeThree.module();
        const view = Scene.createView(three, "a geometry", "a texture");
        compare([view.mesh.geometry, view.mesh.material.map, view.cameraAngle], ["a geometry", "a texture", 0]);
        compare(view.scene.objects.length, 3);
        verify(view.scene.objects.includes(view.mesh));
        Scene.setPose(view, asObject([90, -180, 45]), asObject([0.5, -1, 2]));
        compare([view.mesh.rotation.x, view.mesh.rotation.y, view.mesh.rotation.z], [Math.PI / 2, -Math.PI, Math.PI / 4]);
        compare([view.mesh.position.x, view.mesh.position.y, view.mesh.position.z], [0.5, -1, 2]);
        const calls = [];
        const renderer = {
            setSize: (width, height) => calls.push([width, height]),
            render: (scene, camera) => calls.push([scene === view.scene, camera === view.camera])
        };
        Scene.resize(view, renderer, 300, 200);
        Scene.paint(view, renderer);
        compare([view.camera.aspect, view.camera.updated, calls], [1.5, true, [[300, 200], [true, true]]]);
    }
}
