// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The phone in a three.js scene. No document draws it: one that does hands in the whole of three.js, what its loaders
// have made of the mesh and the texture, and a renderer for its canvas.

const distanceOfCamera = 8;

// "mesh" is what the page's mouse turns; "cameraAngle" is how far the camera is rolled, in degrees.
function createView(three, geometry, texture) {
    const scene = new three.Scene();
    const mesh = new three.Mesh(geometry, new three.MeshStandardMaterial({map: texture}));
    const camera = new three.PerspectiveCamera(45, 1, 0.1, 100);
    const light = new three.DirectionalLight(0xffffff, 2);
    camera.position.z = distanceOfCamera;
    light.position.set(1, 2, 4);
    scene.add(mesh, light, new three.AmbientLight(0xffffff, 1));
    return {scene, mesh, camera, cameraAngle: 0};
}

// Angles in degrees, the position in the page's units.
function setPose(view, rotation, position) {
    const [x, y, z] = [rotation.x, rotation.y, rotation.z + view.cameraAngle].map(degrees => degrees * Math.PI / 180);
    view.mesh.rotation.set(x, y, z);
    view.mesh.position.set(position.x, position.y, position.z);
}

function resize(view, renderer, width, height) {
    view.camera.aspect = width / height;
    view.camera.updateProjectionMatrix();
    renderer.setSize(width, height);
}

function paint(view, renderer) {
    renderer.render(view.scene, view.camera);
}
