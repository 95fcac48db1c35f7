// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// As much of three.js as a scene needs, which only remembers.

function settableVector() {
    return {
        x: 0,
        y: 0,
        z: 0,
        set(x, y, z) {
            Object.assign(this, {x, y, z});
        }
    };
}

function module() {
    return {
        Scene: function() {
            this.objects = [];
            this.add = (...objects) => this.objects.push(...objects);
        },
        Mesh: function(geometry, material) {
            Object.assign(this, {geometry, material, position: settableVector(), rotation: settableVector()});
        },
        MeshStandardMaterial: function(options) {
            Object.assign(this, options);
        },
        PerspectiveCamera: function() {
            this.position = settableVector();
            this.updateProjectionMatrix = () => this.updated = true;
        },
        DirectionalLight: function() {
            this.position = settableVector();
        },
        AmbientLight: function() {}
    };
}
